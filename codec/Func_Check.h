// The check of a reply against the request on the wire. Communication thread.
#ifndef DRAVO_CODEC_FUNC_CHECK_H
#define DRAVO_CODEC_FUNC_CHECK_H

#include "korvel_dravo_port.h"

/// Checks a reply to the head of protocolList, which is not empty, as checkReply does. length is not consulted.
/// @return a CheckResult.
int CheckGetData(QByteArray *reply, int length);

#endif  // DRAVO_CODEC_FUNC_CHECK_H
