#include "host/plan/request_cost.h"

namespace {
constexpr int kFastBaud = 19200;
constexpr qint64 kFastSilenceUs = 1750;
}  // namespace

RequestCost::RequestCost(const dravo::LineSettings &line)
    : baud_(line.baud),
      perCharacter_(line.bitsPerCharacter * 1000000LL),
      silence_(line.baud > kFastBaud ? kFastSilenceUs * baud_ : perCharacter_ * 7 / 2),
      turnaroundUs_(line.replyDelayUs) {}
