#include "line/read_cost.h"

namespace dravo {

namespace {
const int kReplyCharacters = 5;  // station, function, byte count, CRC
const int kSilencesHalfCharacters = 14;
const int kFastSilencesUs = 3500;
const int kFastBaud = 19200;  // above it a silence is a time, no longer a number of characters
const qint64 kMostTurnaroundUs = 10000000;
}  // namespace

ReadCost::ReadCost(const LineCost &line)
    : baud_(qBound(1, line.baud, 10000000)), perByte_(qBound(1, line.bitsPerCharacter, 20) * 1000000LL) {
    const int characters = qBound(0, line.requestCharacters, 256) + kReplyCharacters;
    const qint64 silences = baud_ > kFastBaud ? kFastSilencesUs * baud_ : perByte_ * kSilencesHalfCharacters / 2;
    perRead_ = characters * perByte_ + silences + qBound<qint64>(0, line.turnaroundUs, kMostTurnaroundUs) * baud_;
}

}  // namespace dravo
