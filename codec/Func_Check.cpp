#include "codec/Func_Check.h"

#include "codec/reply_check.h"
#include "driver/Communication_Protocol.h"

int CheckGetData(QByteArray *reply, int /*length*/) {
    return checkReply(PLC_driver.protocolList.at(0), PLC_driver.comInfo->remoteMode != 0, *reply);
}
