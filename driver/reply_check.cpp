// What a reply is worth: its outcome, and the result code that the host sees.
#include <QtCore/QMutexLocker>

#include "cache/Func_DealData.h"
#include "codec/Func_Check.h"
#include "codec/protocol.h"
#include "driver/Communication_Protocol.h"
#include "driver/dispatch.h"

namespace {

enum Outcome {
    kLocalGood,
    kLocalRejected,
    kLocalNoReply,
    kLocalWrongLength,
    kRemoteGood,
    kRemoteRejected,
    kRemoteNoReply,
    kRemoteWrongLength,
    kOutcomes
};
const int kUnknownOutcome = 200;
const int kNumberedOwners = 12;  // ownerIds 0 to 11 have failure codes of their own

struct OutcomeCode {
    int code;
    bool isFailureBase;  // SwitchErrorReturn completes it
};
const OutcomeCode kOutcomeCodes[] = {
    {kResultGood, false},         {kResultLocalRejected, true},
    {kResultLocalNoReply, true},  {kResultLocalWrongLength, true},
    {kResultRemoteGood, false},   {kResultRemoteRejected, true},
    {kResultRemoteNoReply, true}, {kResultRemoteWrongLength, true},
};
static_assert(sizeof kOutcomeCodes / sizeof kOutcomeCodes[0] == kOutcomes, "one code per outcome");

bool nothingCame(int length) {
    return length == 0 && PLC_driver.protocolList.at(0).replyLength != 0;
}

bool hasWrongLength(int length) {
    const int expected = PLC_driver.protocolList.at(0).replyLength;
    return expected != length && expected != kAnyReplyLength;
}

int localOutcome(QByteArray *reply, int length) {
    if (nothingCame(length)) {
        return kLocalNoReply;
    }
    if (hasWrongLength(length)) {
        return kLocalWrongLength;
    }
    switch (CheckGetData(reply, length)) {
        case kReplyToStore: {
            QMutexLocker lock(&PLC_driver.cacheMutex);
            SaveToLocalDataErea(reply);
            return kLocalGood;
        }
        case kReplyComplete:
            return kLocalGood;
        default:
            return kLocalRejected;
    }
}

int remoteOutcome(QByteArray *reply, int length) {
    if (nothingCame(length)) {
        return kRemoteNoReply;
    }
    if (hasWrongLength(length)) {
        return kRemoteWrongLength;
    }
    if (CheckGetData(reply, length) == kReplyRejected) {
        return kRemoteRejected;
    }
    if (PLC_driver.protocolList.at(0).var.param1 != kMergeRead) {
        return kRemoteGood;
    }
    SaveToLocalDataErea(reply);  // a merge read touches no cache entry, so no cacheMutex
    return PLC_driver.comInfo->frameDone == 1 ? kRemoteGood : kLocalGood;
}

}  // namespace

int DealDataOfLocalArea(QByteArray *reply, int length) {
    return GetDriverReturnValue(localOutcome(reply, length));
}

int DealDataOfRemoteArea(QByteArray *reply, int length) {
    return GetDriverReturnValue(remoteOutcome(reply, length));
}

int GetDriverReturnValue(int outcome) {
    if (outcome < 0 || outcome >= kOutcomes) {
        return kUnknownOutcome;
    }
    const OutcomeCode &row = kOutcomeCodes[outcome];
    return row.isFailureBase ? SwitchErrorReturn(row.code) : row.code;
}

int SwitchErrorReturn(int base) {
    const int ownerId = PLC_driver.protocolList.at(0).var.ownerId;
    return base + 1 + (ownerId >= 0 && ownerId < kNumberedOwners ? ownerId : 0);
}
