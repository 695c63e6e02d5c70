// A port and its settings as people say them. Pure; any thread.
#ifndef DRAVO_HOST_COMMANDS_PORT_WORDS_H
#define DRAVO_HOST_COMMANDS_PORT_WORDS_H

#include "host/pump/serial_port.h"

/// "/dev/ttyUSB0 19200 8E1"; without a device "simulated line 115200 8E1".
QString portWords(const PortSettings &port);

#endif  // DRAVO_HOST_COMMANDS_PORT_WORDS_H
