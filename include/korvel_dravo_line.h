// The line engine: what a host needs between the driver and a serial port, without I/O, threads or clock. It owns the
// driver's call loop, decides what goes on the line and which reply belongs to which request, and never lets a late,
// foreign or damaged reply pass for an answer. The host moves bytes:
//
//     dravo::Line line(settings, nowUs());
//     line.watch(variables);
//     for (;;) {
//         line.received(everythingThePortHasNow(), nowUs());       // always before next()
//         const dravo::Step step = line.next(nowUs());
//         if (step.kind == dravo::Step::Send) { writeToPort(step.bytes); continue; }
//         waitForBytesUntil(step.untilUs);
//         for (dravo::LineEvent event; line.takeEvent(&event);) { ... }
//     }
//
// Time is microseconds of a clock that does not run backwards; its start does not matter. All functions belong to one
// thread, the driver's communication thread; GetRegisterData reads values from any.
//
// What is promised, for controllers that answer each request they get at most once and at most the reply lifetime
// after it was sent, in any order, on any number of stations, through a line that loses, cuts, alters and adds bytes
// (accidents of 2^-16, where altered bytes get a right CRC, aside):
// - Of reads: no value is stored that its controller did not hold at that address between the sending of a request for
//   it and the reply.
// - Of writes: "done" means that at least one sending of it was carried out after it was asked for and before the
//   report. Surplus sendings may still be carried out within a lifetime, but never after an overlapping later write was
//   sent. "Failed" means unknown: it may have been carried out.
// A repeater that doubles answers breaks the first assumption; answersMayDouble is for such lines.
//
// The rules behind it, and why:
// 1. Outstanding answers. Modbus RTU has no request numbers, so every sending leaves an entry until the end of sending
//    plus the lifetime. An answer removes the oldest entry of its frame: the ones left expire later, never too early.
// 2. Hold back. The first try of a request waits while an entry of another request could get an answer that looks the
//    same: same station, function and byte count of a read, same echoed fields of a write.
// 3. Order of writes. A write waits for outstanding writes that overlap its addresses: one thought lost may still be
//    carried out after a newer one. The read half of a bit write waits in the same way.
// 4. Start. One lifetime of silence first, after a reconnect too: what an earlier master asked may still be answered.
// 5. Input first. Everything received goes in before the next frame goes out; an answer lies wholly after the sending
//    of what it answers.
// 6. Frames inside frames. A frame that is still arriving is not searched for others, and a frame counts when it
//    arrived, not when it was recognised.
// 7. Exceptions name no address, so none is believed while another request of that station and function is
//    outstanding. Final ones (1, 2, 3) are not retried, busy ones (5, 6) after a pause.
// 8. Echo. Some adapters return what was sent. Requests of functions 5 and 6, and of function 1 with 17 to 24 bits from
//    0x0300 to 0x03FF, look like their own answer: while nobody knows, their first copy is dropped. Three ordinary
//    reads in a row that are answered at the first try, with nothing before the answer, show that there is no echo.
//    Where there is one, each copy stays expected for a lifetime.
// 9. Waiting on. A try that is not the last waits out its lifetime instead of being sent again, if the station answered
//    its last request: a second sending would only be one more answer to wait for.
#ifndef KORVEL_DRAVO_LINE_H
#define KORVEL_DRAVO_LINE_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVector>

namespace dravo {

enum EchoMode { EchoAuto, EchoOn, EchoOff };

/// How the line is run. Times in microseconds.
struct LineSettings {
    LineSettings();  // what the comments say

    int baud;               // bits per second, above 0: 19200
    int bitsPerCharacter;   // start, data, parity and stop bits, 10 to 12: 11
    qint64 timeoutUs;       // from the end of sending to the first byte of the answer: 500000
    qint64 lifetimeUs;      // the reply lifetime, from the end of sending to the answer's last byte; 0: three timeouts
    qint64 startSilenceUs;  // before the first frame, and after restart(); below 0: one lifetime
    qint64 turnaroundUs;    // time the stations have to carry out a broadcast: 100000
    qint64 silenceUs;       // no byte for so long ends what was arriving, at least 3.5 characters: 20000, since a USB
                            // converter hands bytes on every 16 ms
    qint64 busyPauseUs;     // before a request that was answered with exception 5 or 6 is sent again: 200000
    EchoMode echo;          // EchoAuto
    bool answersMayDouble;  // entries stay for their full lifetime: false
    int retries;            // times that a request is sent again: 2
    int frameLimit;         // registers in a request, eight times as many coils: 32
    int remoteNode;         // 0 to 255: requests are remote frames for this node; -1: controller frames
    int downAfter;          // requests in a row without any answer that make a station down; 0: never. 3
    qint64 firstProbeUs;    // from a station's going down to its first probe; doubled after each: 1000000
    qint64 longestProbeUs;  // longest time between two probes: 30000000
};

/// What to do now.
struct Step {
    enum Kind { Send, Wait };
    Kind kind;
    QByteArray bytes;  // Send: all of them at once
    qint64 untilUs;    // Wait: nothing to do before, unless bytes arrive or an operation is asked for
};

/// What has happened.
struct LineEvent {
    enum Kind {
        Exchange,     // one sending has been judged
        Operation,    // a write or one-shot read is over
        StationDown,  // too many requests in a row without an answer: its cyclic reads rest
        StationUp
    };
    enum Failure {
        None,
        NoAnswer,  // nothing came, or nothing of that station
        Damaged,   // bytes came, and no frame that fits
        Refused    // an exception
    };
    LineEvent();

    Kind kind;
    int station;
    bool over;     // Exchange: the driver's operation is finished, well or badly; else the same is sent again, or
                   // the other half of a bit write follows
    bool cyclic;   // Exchange: of a cyclic read
    bool write;    // Exchange: of a write; a bit write's read half is none
    int elemType;  // Exchange: as carried on the line, and so address and count
    int address;
    int count;
    int code;            // Exchange, Operation: the driver's result code
    Failure failure;     // Exchange, Operation
    int exceptionCode;   // Exchange, Operation: where Refused, else 0
    qint64 replyUs;      // Exchange: from the end of sending to the answer's last byte; below 0: there was none
    QByteArray request;  // Exchange: the frame sent, and the answer to it that was believed; empty: none
    QByteArray reply;
    int operation;  // Operation: its number
    bool done;      // Operation
};

}  // namespace dravo

#endif  // KORVEL_DRAVO_LINE_H
