// Read requests to a controller. Pure; any thread.
#ifndef DRAVO_CODEC_READ_REQUEST_H
#define DRAVO_CODEC_READ_REQUEST_H

#include "korvel_dravo_port.h"

/// The read of a normalised variable: function 1 for bit types, 3 for word and double-word types, 0 and no data for any
/// other.
Protocol readRequest(const RW_VAR &var);

#endif  // DRAVO_CODEC_READ_REQUEST_H
