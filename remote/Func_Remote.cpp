#include "remote/Func_Remote.h"

#include "cache/Func_DealData.h"
#include "codec/Func_Operation.h"
#include "remote/remote_request.h"

void Remote_ReadVar(RW_VAR *var) {
    startOperation(remoteReadRequest(*var));
}

void Remote_WriteVar(RW_VAR *var) {
    startOperation(remoteWriteRequest(*var));
    RW_VAR shown = *var;  // padded while it is stored
    WriteDataToLocal(&shown);
}
