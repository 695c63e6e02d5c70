#include "host/result_text.h"

#include "korvel_dravo_port.h"

namespace {

constexpr int kOwnerIds = 12;  // a failure code is its base + 1 to base + 12

struct FailureRange {
    int base;
    Outcome outcome;
};
constexpr FailureRange kFailures[] = {
    {kResultLocalRejected, Outcome::Rejected},       {kResultLocalNoReply, Outcome::NoReply},
    {kResultLocalWrongLength, Outcome::WrongLength}, {kResultRemoteRejected, Outcome::Rejected},
    {kResultRemoteNoReply, Outcome::NoReply},        {kResultRemoteWrongLength, Outcome::WrongLength},
};

QString exceptionName(int exceptionCode) {
    switch (exceptionCode) {
        case 1:
            return QStringLiteral("illegal function");
        case 2:
            return QStringLiteral("illegal data address");
        case 3:
            return QStringLiteral("illegal data value");
        case 4:
            return QStringLiteral("device failure");
        case 5:
            return QStringLiteral("acknowledge, still working");
        case 6:
            return QStringLiteral("device busy");
        case 7:
            return QStringLiteral("negative acknowledge");
        case 8:
            return QStringLiteral("memory parity error");
        case 10:
            return QStringLiteral("gateway path unavailable");
        case 11:
            return QStringLiteral("gateway target does not respond");
        default:
            return QStringLiteral("unknown exception");
    }
}

}  // namespace

Outcome outcomeOf(int code) {
    if (code == kResultRetry) {
        return Outcome::Retry;
    }
    for (const FailureRange &range : kFailures) {
        if (code > range.base && code <= range.base + kOwnerIds) {
            return range.outcome;
        }
    }
    return code == kResultGood || code == kResultRemoteGood ? Outcome::Good : Outcome::Rejected;
}

QString describeResult(int code, int exceptionCode) {
    const Outcome outcome = outcomeOf(code);
    if (outcome == Outcome::Good) {
        return QStringLiteral("good");
    }
    if (exceptionCode != 0) {
        return QStringLiteral("refused: %1 (exception %2)").arg(exceptionName(exceptionCode)).arg(exceptionCode);
    }
    switch (outcome) {
        case Outcome::Retry:
            return QStringLiteral("bad reply, sent again");
        case Outcome::NoReply:
            return QStringLiteral("no reply");
        case Outcome::WrongLength:
            return QStringLiteral("reply of the wrong length");
        default:
            return QStringLiteral("reply with a wrong station or checksum");
    }
}
