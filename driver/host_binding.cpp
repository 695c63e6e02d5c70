// How the host binds itself: its settings record, three area words, two callbacks. No lock, no check.
#include "driver/Communication_Protocol.h"

unsigned int LB;
unsigned int LW;
unsigned int RWI;

void SetComInfo(ComInfo *comInfo) {
    if (comInfo) {
        comInfo->clearedWordB = 0;
        comInfo->clearedWordA = 0;
    }
    PLC_driver.comInfo = comInfo;
}

void FlashLocalRegister(unsigned int lb, unsigned int lw, unsigned int rwi) {
    LB = lb;
    LW = lw;
    RWI = rwi;
}

void RegistCallBackFuncIntf(VarCallBack varCallBack, ListCallBack listCallBack) {
    PLC_driver.varCallBack = varCallBack;
    PLC_driver.listCallBack = listCallBack;
}
