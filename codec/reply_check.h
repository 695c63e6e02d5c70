// The check of a reply's bytes against the request that they answer. Pure; any thread.
#ifndef DRAVO_CODEC_REPLY_CHECK_H
#define DRAVO_CODEC_REPLY_CHECK_H

#include "korvel_dravo_port.h"

enum CheckResult { kReplyRejected = 0, kReplyToStore = 1, kReplyComplete = 2 };

/// Checks size, station and CRC. In remote mode the request's station byte is byte 4 of its frame, else byte 0.
/// @return kReplyComplete: good, and nothing to store; so is whatever arrives for a broadcast.
CheckResult checkReply(const Protocol &request, bool remoteMode, const QByteArray &reply);

#endif  // DRAVO_CODEC_REPLY_CHECK_H
