// The driver's result codes and a controller's exceptions in words.
#include "korvel_dravo_line.h"
#include "korvel_dravo_port.h"

namespace dravo {

namespace {

const int kOwnerIds = 12;  // a failure code is its base + 1 to base + 12

struct FailureRange {
    int base;
    const char *text;
};
// The driver is handed a damaged reply as one of the wrong length.
const FailureRange kFailures[] = {
    {kResultLocalNoReply, "no reply"},          {kResultRemoteNoReply, "no reply"},
    {kResultLocalWrongLength, "damaged reply"}, {kResultRemoteWrongLength, "damaged reply"},
    {kResultLocalRejected, "damaged reply"},    {kResultRemoteRejected, "damaged reply"},
};

struct ExceptionName {
    int code;
    const char *name;
};
// Modbus Application Protocol 1.1b3, section 7; 7 is of the first edition.
const ExceptionName kExceptions[] = {
    {1, "illegal function"},           {2, "illegal data address"},
    {3, "illegal data value"},         {4, "device failure"},
    {5, "acknowledge, still working"}, {6, "device busy"},
    {7, "negative acknowledge"},       {8, "memory parity error"},
    {10, "gateway path unavailable"},  {11, "gateway target does not respond"},
};

QString exceptionName(int exceptionCode) {
    for (unsigned int i = 0; i < sizeof kExceptions / sizeof kExceptions[0]; ++i) {
        if (kExceptions[i].code == exceptionCode) {
            return QLatin1String(kExceptions[i].name);
        }
    }
    return QLatin1String("unknown exception");
}

}  // namespace

QString describeResult(int code, int exceptionCode) {
    if (code == kResultGood || code == kResultRemoteGood) {
        return QLatin1String("good");
    }
    if (exceptionCode != 0) {
        return QString::fromLatin1("refused: %1 (exception %2)").arg(exceptionName(exceptionCode)).arg(exceptionCode);
    }
    if (code == kResultRetry) {
        return QLatin1String("bad reply, sent again");
    }
    for (unsigned int i = 0; i < sizeof kFailures / sizeof kFailures[0]; ++i) {
        if (code > kFailures[i].base && code <= kFailures[i].base + kOwnerIds) {
            return QLatin1String(kFailures[i].text);
        }
    }
    return QString::fromLatin1("unknown result code %1").arg(code);
}

}  // namespace dravo
