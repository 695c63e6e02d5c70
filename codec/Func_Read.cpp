#include "codec/Func_Read.h"

#include "codec/Func_Operation.h"
#include "codec/read_request.h"

void ReadRegister(RW_VAR *var) {
    ReadAnalog(var);
}

void ReadAnalog(RW_VAR *var) {
    startOperation(readRequest(*var));
}
