#include "driver/Communication_Protocol.h"

Communication_Protocol PLC_driver;

Communication_Protocol::Communication_Protocol()
    : comInfo(nullptr),
      varCallBack(nullptr),
      listCallBack(nullptr),
      retVar(),
      comType(kNothingBuilt),
      writeTimes(0),
      onceReadTimes(0),
      readCycleCount(0),
      comFailed(0),
      spareFlag(0) {}
