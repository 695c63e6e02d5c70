#include "driver/reply_judging.h"

#include <QtCore/QMutexLocker>

#include "cache/Func_DealData.h"
#include "codec/Func_Check.h"
#include "codec/protocol.h"
#include "codec/reply_outcome.h"
#include "driver/Communication_Protocol.h"

namespace {

// A host may pass a length of 0 with a pointer to nothing, so the length comes first.
int checked(const Protocol &request, QByteArray *reply, int length) {
    return lengthFits(request, length) ? CheckGetData(reply, length) : int(kReplyRejected);
}

}  // namespace

int DealDataOfLocalArea(QByteArray *reply, int length) {
    Q_ASSERT(isHeld(PLC_driver.listMutex));
    const Protocol &request = PLC_driver.protocolList.at(0);
    const int checkResult = checked(request, reply, length);
    const Outcome outcome = localOutcome(request, length, checkResult);
    if (outcome == kLocalGood && checkResult == kReplyToStore) {
        QMutexLocker lock(&PLC_driver.cacheMutex);
        SaveToLocalDataErea(reply);
    }
    return GetDriverReturnValue(outcome);
}

int DealDataOfRemoteArea(QByteArray *reply, int length) {
    Q_ASSERT(isHeld(PLC_driver.listMutex));
    const Protocol &request = PLC_driver.protocolList.at(0);
    const int repliesBefore = PLC_driver.comInfo->frameDone;
    const Outcome outcome = remoteOutcome(request, length, checked(request, reply, length), repliesBefore);
    if (isMergeRead(request) && (outcome == kLocalGood || outcome == kRemoteGood)) {
        SaveToLocalDataErea(reply);  // a merge read touches no cache entry, so no cacheMutex
    }
    return GetDriverReturnValue(outcome);
}

int GetDriverReturnValue(int outcome) {
    return resultCode(outcome, PLC_driver.protocolList.at(0).var.ownerId);
}

int SwitchErrorReturn(int base) {
    return failureCode(base, PLC_driver.protocolList.at(0).var.ownerId);
}
