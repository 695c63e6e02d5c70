#include "codec/Func_Operation.h"

#include <utility>

#include "driver/Communication_Protocol.h"

namespace {

// Moved, not copied: a record holds five shared containers, and each copy of one costs two atomic operations.
void append(Protocol &request) {
    PLC_driver.protocolList.append(Protocol());
    PLC_driver.protocolList.last() = std::move(request);
}

void start(int replies) {
    PLC_driver.comInfo->frameDone = 0;
    PLC_driver.comInfo->frameTotal = replies;
}

}  // namespace

void startOperation(Protocol request) {
    Q_ASSERT(isHeld(PLC_driver.listMutex));
    append(request);
    start(1);
}

void startOperation(Protocol first, Protocol second) {
    Q_ASSERT(isHeld(PLC_driver.listMutex));
    append(first);
    append(second);
    start(2);
}
