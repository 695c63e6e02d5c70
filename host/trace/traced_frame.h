// A frame, or bytes that are none, as they went over the line, with what became of them. A value; any thread.
#ifndef DRAVO_HOST_TRACE_TRACED_FRAME_H
#define DRAVO_HOST_TRACE_TRACED_FRAME_H

#include "korvel_dravo_line.h"

struct TracedFrame {
    enum Kind {
        Request,
        Copy,   // of a request, from an adapter that echoes
        Reply,  // whole, be it dropped or not
        Damaged
    };
    Kind kind = Request;
    bool sent = false;    // else received
    bool remote = false;  // a remote frame, or the answer to one
    qint64 us = 0;        // when it began to go out, or when its last byte was seen
    QByteArray bytes;
    int station = -1;            // that it names; of damaged bytes the one that was asked last; -1: none was
    dravo::Elements elements{};  // that it is about, as carried on the line; count 0: not known
    QByteArray request;          // of a reply that was taken for an answer: what it answers
    QString verdict;             // what became of it
    QString result;              // what the driver said, where it was asked
    bool good = false;           // by the driver's word
};

#endif  // DRAVO_HOST_TRACE_TRACED_FRAME_H
