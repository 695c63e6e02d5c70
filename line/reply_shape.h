// What can answer a request frame, and what a request touches. Pure; any thread.
#ifndef DRAVO_LINE_REPLY_SHAPE_H
#define DRAVO_LINE_REPLY_SHAPE_H

#include <QtCore/QByteArray>

#include "korvel_dravo_port.h"

namespace dravo {

/// Coils or registers of a station that a request touches, by Modbus address.
struct Span {
    enum Space { Nothing, Coils, Registers, Everything };
    Space space;
    int first;
    int count;
};

struct RequestShape {
    QByteArray frame;
    int station;      // 0: a broadcast, which nothing answers
    int function;     // kAnyFunction: replies of remote mode do not name it
    int replyLength;  // of an ordinary answer; 0: there is none
    QByteArray head;  // what is known of the answer from its third byte on: byte count of a read, echo of a write
    bool isWrite;
    Span span;           // of a write and of the read half of a bit write; else nothing
    bool looksAnswered;  // the frame itself could be taken for its answer

    /// Whether a whole frame with a right CRC answers the request as an ordinary reply.
    bool fits(const QByteArray &reply) const;
    /// Whether it is an exception that can be an answer to the request.
    bool fitsException(const QByteArray &reply) const;
};

const int kAnyFunction = -1;
const int kMergeRead = -1;  // param1 of the read half of a bit write
const int kExceptionBit = 0x80;
const int kExceptionLength = 5;

/// Whether a whole reply frame is an exception.
bool isException(const QByteArray &reply);

/// @param remote  requests are remote frames.
RequestShape shapeOf(const Protocol &request, bool remote);

/// Whether an ordinary answer to one could be taken for an answer to the other.
bool answersLookAlike(const RequestShape &a, const RequestShape &b);

/// Whether two requests touch a common address. Station 0 is every station.
bool overlap(const RequestShape &a, const RequestShape &b);

}  // namespace dravo

#endif  // DRAVO_LINE_REPLY_SHAPE_H
