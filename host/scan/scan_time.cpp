#include "host/scan/scan_time.h"

namespace {

constexpr qint64 kSecondUs = 1000000;
constexpr qint64 kRequestCharacters = 8 + 4;  // and the silence around it
constexpr qint64 kShortestSilenceUs = 2000;   // above 19200 baud
constexpr qint64 kOverheadUs = 2000;          // what this machine adds to each request
constexpr qint64 kMostOfOneUnit = 90;

}  // namespace

qint64 longestSweepUs(const dravo::LineSettings &line, int stations, int rounds) {
    const qint64 requestUs = kRequestCharacters * line.bitsPerCharacter * kSecondUs / line.baud + kShortestSilenceUs;
    const qint64 roundUs = stations * (requestUs + line.timeoutUs + kOverheadUs);
    // The same station is not asked twice in a lifetime.
    return rounds * qMax(roundUs, line.lifetimeUs + requestUs) + line.lifetimeUs;
}

QString roughTime(qint64 us) {
    const qint64 seconds = (us + kSecondUs - 1) / kSecondUs;
    const qint64 minutes = (seconds + 59) / 60;
    return seconds <= kMostOfOneUnit   ? QStringLiteral("%1 s").arg(seconds)
           : minutes <= kMostOfOneUnit ? QStringLiteral("%1 min").arg(minutes)
                                       : QStringLiteral("%1 h").arg((minutes + 59) / 60);
}
