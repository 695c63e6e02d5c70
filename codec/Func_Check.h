// The check of a reply against the request on the wire. Communication thread.
#ifndef DRAVO_CODEC_FUNC_CHECK_H
#define DRAVO_CODEC_FUNC_CHECK_H

#include "korvel_dravo_port.h"

enum CheckResult { kReplyRejected = 0, kReplyToStore = 1, kReplyComplete = 2 };

/// Checks size, station and CRC of a reply to the head of protocolList, which is not empty. length is not consulted.
/// @return a CheckResult; kReplyComplete: good, and nothing to store.
int CheckGetData(QByteArray *reply, int length);

#endif  // DRAVO_CODEC_FUNC_CHECK_H
