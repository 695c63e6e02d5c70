// Queues requests as the records that the host is handed. Communication thread.
#ifndef DRAVO_CODEC_PROTOCOL_H
#define DRAVO_CODEC_PROTOCOL_H

#include "korvel_dravo_port.h"

/// param1 of the read half of a write to a bit inside a word: its reply completes the pending write instead of filling
/// the cache.
const int kMergeRead = -1;

/// replyLength of a request that takes a reply of any length.
const int kAnyReplyLength = -1;

/// What a request expects back.
struct ExpectedReply {
    int length;      // bytes of the whole reply; 0: none comes
    int dataOffset;  // of the first data byte
    int dataLength;  // data bytes
};

/// The reply to a read of dataBytes data bytes.
ExpectedReply readReply(qint64 dataBytes);

/// The reply to a write to station; a broadcast (station 0) gets none.
ExpectedReply writeReply(int station);

/// Appends a request to protocolList and starts an operation of one reply.
void queueRequest(const QByteArray &frame, const ExpectedReply &reply, const RW_VAR &var);

/// Starts the count of an operation's replies.
void expectReplies(int frameTotal);

#endif  // DRAVO_CODEC_PROTOCOL_H
