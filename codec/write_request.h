// Write requests to a controller. Pure; any thread.
#ifndef DRAVO_CODEC_WRITE_REQUEST_H
#define DRAVO_CODEC_WRITE_REQUEST_H

#include "korvel_dravo_port.h"

/// The write of var's data; what they lack is sent as zeros. Function 0 and no values for a type without a write form:
/// a bit inside a word (see bit_write.h) or a code outside 0 to 21.
Protocol writeRequest(const RW_VAR &var);

#endif  // DRAVO_CODEC_WRITE_REQUEST_H
