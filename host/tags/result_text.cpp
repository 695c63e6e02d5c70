#include "host/tags/result_text.h"

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

struct ExceptionName {
    int code;
    const char *name;
};
constexpr ExceptionName kExceptions[] = {
    {1, "illegal function"},           {2, "illegal data address"},
    {3, "illegal data value"},         {4, "device failure"},
    {5, "acknowledge, still working"}, {6, "device busy"},
    {7, "negative acknowledge"},       {8, "memory parity error"},
    {10, "gateway path unavailable"},  {11, "gateway target does not respond"},
};

QString exceptionName(int exceptionCode) {
    for (const ExceptionName &exception : kExceptions) {
        if (exception.code == exceptionCode) {
            return QLatin1String(exception.name);
        }
    }
    return QLatin1String("unknown exception");
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
    if (outcome != Outcome::Good && exceptionCode != 0) {
        return QString::fromLatin1("refused: %1 (exception %2)").arg(exceptionName(exceptionCode)).arg(exceptionCode);
    }
    switch (outcome) {
        case Outcome::Good:
            return QLatin1String("good");
        case Outcome::Retry:
            return QLatin1String("bad reply, sent again");
        case Outcome::NoReply:
            return QLatin1String("no reply");
        case Outcome::WrongLength:
            return QLatin1String("reply of the wrong length");
        case Outcome::Rejected:
            break;
    }
    return QLatin1String("reply with a wrong station or checksum");
}
