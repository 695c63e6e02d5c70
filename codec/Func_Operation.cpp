#include "codec/Func_Operation.h"

#include "driver/Communication_Protocol.h"

void startOperation(std::initializer_list<Protocol> requests) {
    Q_ASSERT(isHeld(PLC_driver.listMutex));
    for (const Protocol &request : requests) {
        PLC_driver.protocolList.append(request);
    }
    PLC_driver.comInfo->frameDone = 0;
    PLC_driver.comInfo->frameTotal = int(requests.size());
}
