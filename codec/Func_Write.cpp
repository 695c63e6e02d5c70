#include "codec/Func_Write.h"

#include <utility>

#include "cache/Func_DealData.h"
#include "codec/Func_Operation.h"
#include "codec/bit_write.h"
#include "codec/write_request.h"
#include "driver/Communication_Protocol.h"

void WriteRegister(RW_VAR *var) {
    if (isBitWrite(*var)) {
        BitWrite halves = bitWrite(*var);
        startOperation(std::move(halves.read), std::move(halves.write));
    } else {
        WriteAnalog(var);
    }
    if (!PLC_driver.comFailed) {
        RW_VAR shown = *var;  // padded while it is stored
        WriteDataToLocal(&shown);
    }
}

void WriteAnalog(RW_VAR *var) {
    startOperation(writeRequest(*var));
}
