// The request record that the host is handed, as builders make it. Pure; any thread.
#ifndef DRAVO_CODEC_PROTOCOL_H
#define DRAVO_CODEC_PROTOCOL_H

#include "korvel_dravo_port.h"

/// param1 of the read half of a write to a bit inside a word: its reply completes the pending write instead of filling
/// the cache.
const int kMergeRead = -1;

inline bool isMergeRead(const Protocol &request) {
    return request.var.param1 == kMergeRead;
}

/// replyLength of a request that takes a reply of any length.
const int kAnyReplyLength = -1;

/// A read of var whose reply carries dataBytes data bytes.
Protocol readProtocol(const RW_VAR &var, const QByteArray &frame, qint64 dataBytes);

/// A write of var; a broadcast (station 0) expects no reply.
Protocol writeProtocol(const RW_VAR &var, const QByteArray &frame);

#endif  // DRAVO_CODEC_PROTOCOL_H
