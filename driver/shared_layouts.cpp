// The layouts that 32-bit hosts share byte for byte, offset by offset. 64-bit builds keep the order of the members.
#include <cstddef>

#include "driver/Communication_Protocol.h"

namespace {

const bool k32Bit = sizeof(void *) == 4;

#define SHARED_FIELD(record, field, offset) \
    static_assert(!k32Bit || offsetof(record, field) == (offset), #record "::" #field " is shared with the host")
#define SHARED_SIZE(record, size) static_assert(!k32Bit || sizeof(record) == (size), #record " is shared with the host")

SHARED_FIELD(ComInfo, maxGroupLength, 16);
SHARED_FIELD(ComInfo, defaultStation, 24);
SHARED_FIELD(ComInfo, retryTimes, 28);
SHARED_FIELD(ComInfo, retryCount, 32);
SHARED_FIELD(ComInfo, useVarStation, 36);
SHARED_FIELD(ComInfo, clearedWordA, 40);
SHARED_FIELD(ComInfo, frameTotal, 44);
SHARED_FIELD(ComInfo, frameDone, 48);
SHARED_FIELD(ComInfo, clearedWordB, 52);
SHARED_FIELD(ComInfo, remoteMode, 56);
SHARED_FIELD(ComInfo, localNode, 60);
SHARED_FIELD(ComInfo, writeMode, 64);
SHARED_FIELD(ComInfo, cycleDone, 68);
SHARED_FIELD(ComInfo, hostContext, 72);
SHARED_SIZE(ComInfo, 76);

SHARED_FIELD(RW_VAR, ownerId, 0);
SHARED_FIELD(RW_VAR, itemId, 4);
SHARED_FIELD(RW_VAR, accessFlag, 8);
SHARED_FIELD(RW_VAR, remoteMode, 12);
SHARED_FIELD(RW_VAR, nodeId, 16);
SHARED_FIELD(RW_VAR, retValue, 20);
SHARED_FIELD(RW_VAR, label, 24);
SHARED_FIELD(RW_VAR, addressText, 28);
SHARED_FIELD(RW_VAR, elemType, 32);
SHARED_FIELD(RW_VAR, address, 36);
SHARED_FIELD(RW_VAR, station, 40);
SHARED_FIELD(RW_VAR, count, 44);
SHARED_FIELD(RW_VAR, param1, 48);
SHARED_FIELD(RW_VAR, param2, 52);
SHARED_FIELD(RW_VAR, data, 56);
SHARED_SIZE(RW_VAR, 60);

SHARED_FIELD(ReadVarEntry, elemType, 1);
SHARED_FIELD(ReadVarEntry, station, 2);
SHARED_FIELD(ReadVarEntry, addressText, 8);
SHARED_FIELD(ReadVarEntry, label, 12);
SHARED_FIELD(ReadVarEntry, count, 16);
SHARED_SIZE(ReadVarEntry, 20);

SHARED_FIELD(Protocol, frame, 0);
SHARED_FIELD(Protocol, frameLength, 4);
SHARED_FIELD(Protocol, replyLength, 8);
SHARED_FIELD(Protocol, dataOffset, 12);
SHARED_FIELD(Protocol, dataLength, 16);
SHARED_FIELD(Protocol, var, 20);
SHARED_FIELD(Protocol, reserved1, 80);
SHARED_FIELD(Protocol, reserved2, 84);
SHARED_FIELD(Protocol, reserved3, 88);
SHARED_SIZE(Protocol, 92);

SHARED_FIELD(Communication_Protocol, comInfo, 0);
SHARED_FIELD(Communication_Protocol, readVarList, 4);
SHARED_FIELD(Communication_Protocol, writeVarList, 8);
SHARED_FIELD(Communication_Protocol, onceReadVarList, 12);
SHARED_FIELD(Communication_Protocol, spareVarList, 16);
SHARED_FIELD(Communication_Protocol, protocolList, 20);
SHARED_FIELD(Communication_Protocol, extendVars, 24);
SHARED_FIELD(Communication_Protocol, varCallBack, 28);
SHARED_FIELD(Communication_Protocol, listCallBack, 32);
SHARED_FIELD(Communication_Protocol, listMutex, 36);
SHARED_FIELD(Communication_Protocol, cacheMutex, 40);
SHARED_FIELD(Communication_Protocol, stationMutex, 44);
SHARED_FIELD(Communication_Protocol, stationMap, 48);
SHARED_FIELD(Communication_Protocol, retVar, 52);
SHARED_FIELD(Communication_Protocol, comType, 112);
SHARED_FIELD(Communication_Protocol, writeTimes, 116);
SHARED_FIELD(Communication_Protocol, onceReadTimes, 120);
SHARED_FIELD(Communication_Protocol, readCycleCount, 124);
SHARED_FIELD(Communication_Protocol, comFailed, 128);
SHARED_FIELD(Communication_Protocol, spareFlag, 129);
SHARED_FIELD(Communication_Protocol, valueCache, 132);
SHARED_SIZE(Communication_Protocol, 136);

}  // namespace
