// The line engine: what a host needs between the driver and a serial port, without I/O, threads or clock. It owns the
// driver's call loop, decides what goes on the line and which reply belongs to which request, and never lets a late,
// foreign or damaged reply pass for an answer. The host moves bytes:
//
//     dravo::Line line(settings, nowUs());
//     line.watch(variables, nowUs());
//     for (;;) {
//         line.received(everythingThePortHasNow(), nowUs());  // always before next()
//         const dravo::Step step = line.next(nowUs());
//         for (dravo::LineEvent event; line.takeEvent(&event);) { ... }
//         if (step.kind == dravo::Step::Send) {
//             writeToPort(step.bytes);
//             line.sent(nowUs());
//         } else {
//             waitForBytesUntil(step.untilUs);  // at most: an operation asked for meanwhile does not wait for it
//         }
//     }
//
// Time is microseconds of a clock that does not run backwards; its start does not matter.
//
// Threads. Each function says on which it may be called. "Line's thread": one at a time from constructor to destructor,
// both included; it is the driver's communication thread. "Any thread": at any time, beside the line's thread too. Of
// the driver's own functions other threads call GetRegisterData and the utilities while a line exists, nothing else:
// variables, operations and stations go through the line. Reading values may neither overlap the constructor nor the
// destructor, which bind the driver.
//
// What is promised, for controllers that answer each request they get at most once and at most the reply lifetime
// after it was sent, in any order, on any number of stations, through a line that loses, cuts, alters and adds bytes
// (accidents of 2^-16, where altered bytes get a right CRC, aside):
// - Of reads: no value is stored that its controller did not hold at that address between the sending of a request for
//   it and the reply.
// - Of writes: "done" means that at least one sending of it was carried out after it was asked for and before the
//   report. Surplus sendings may still be carried out within a lifetime, but never after an overlapping later write was
//   sent. "Failed" means unknown: it may have been carried out.
// A repeater that doubles answers breaks the first assumption; answersMayDouble is for such lines. Answers to remote
// frames name no function, so there a frame of another function that nobody asked for can pass for an answer.
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
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVector>

#include "korvel_dravo_statistics.h"

namespace dravo {

enum EchoMode { EchoAuto, EchoOn, EchoOff };

/// How variables are merged into cyclic reads. Either way none is longer than the frame limit.
enum MergeRule {
    MergeByDriver,  // neighbours within the frame limit share a request; what that would tear or make longer than
                    // Modbus allows is merged by time, station and type at a time
    MergeByTime     // the split that takes the least time on the line
};

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
    bool answersMayDouble;  // entries stay for their full lifetime: false. Requests that look like the last one then
                            // wait for it, so that one takes a lifetime
    int retries;            // times that a request is sent again: 2
    int frameLimit;         // elements in a request, 1 to 125, and eight times as many coils: 32. Of 32-bit values
                            // that are one element each (type 13) a request holds 62 at most
    int remoteNode;         // 0 to 255: requests are remote frames for this node; -1: controller frames
    MergeRule merge;        // MergeByDriver
    qint64 replyDelayUs;    // what a controller takes to answer, for planning: 5000
    qint64 passPeriodUs;    // least time from the start of a pass over the cyclic reads to the next: 0
    qint64 staleAfterUs;    // age from which a value is stale; 0: three planned passes, at least a second
    qint64 refusedRetryUs;  // between two reads of what a controller refused: 60000000
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

/// What one value of a variable is, as a user sees it.
enum ValueKind { BitValue, WordValue, DoubleWordValue };

/// Most values in one variable.
enum { kMostValues = 2000 };

/// Elements of one type, as carried on the line, at one station.
struct Elements {
    int station;
    int elemType;
    int address;
    int count;
};

/// A variable of a controller, resolved once from what a user writes.
struct Variable {
    Variable();

    QString label;
    QString addressText;  // octal for types 0 and 1, "word.bit" for bits inside words, else decimal
    int elemType;         // 0 to 21
    int station;          // 1 to 247
    int count;            // values that the user sees: bits, registers or 32-bit values, 1 to kMostValues

    // From here on: worked out by resolve().
    ValueKind kind;
    int driverCount;     // the count that the driver's calls take: 32-bit values count as two registers
    int elementAddress;  // of the first value; a bit inside a word is word * 16 + bit
    int firstBit;        // of a bit inside a word, its place in the first word of elements; else 0
    Elements elements;   // that a read covers
};

/// A fault of a variable and the field that has it: "type", "address", "station" or "count".
struct VariableFault {
    QString field;
    QString reason;
};

/// Works out the elements of a variable from its first five fields. Pure; any thread.
/// @return everything that keeps it from being read: type, address and its place in the controller's 65,536 coils or
///         registers, station, count. Empty: usable. Otherwise what was worked out is not to be used.
QList<VariableFault> resolve(Variable *variable);

enum Condition {
    Fresh,
    Stale,        // its oldest part is older than the settings allow; it was written and not read since; or a 32-bit
                  // value is only read in halves: they need not belong together
    NeverRead,    // some of it
    Failing,      // the last request for some of it failed
    NotReadable,  // its controller refuses it
    Down          // its station does not answer and is asked only now and then
};

/// One word for a condition, two for some: "never read". Pure; any thread.
QString conditionName(Condition condition);

/// What is known of a variable.
struct ValueState {
    ValueState();

    Condition condition;
    qint64 ageUs;              // since the oldest part of it was read; -1: some was never read
    int code;                  // Failing, NotReadable, Down: the driver's result code of the last request, else 0
    int exceptionCode;         // of the exception that refused it, else 0
    QVector<bool> valuesRead;  // for each value, whether all of it has ever been read
};

/// A result code of the driver and an exception (0: none) in words. Pure; any thread.
QString describeResult(int code, int exceptionCode);

/// What has happened.
struct LineEvent {
    enum Kind {
        Exchange,     // one sending has been judged
        Operation,    // a write or one-shot read is over
        StationDown,  // too many requests in a row without an answer: its cyclic reads rest
        StationUp,
        PassDone,     // every cyclic read of a station that is up has had its turn
        ReadsChanged  // a controller refused something: its reads are now cut or left out, see text
    };
    enum Failure {
        None,
        NoAnswer,  // nothing came, or nothing of that station
        Damaged,   // bytes came, and no frame that fits
        Refused,   // an exception
        NotSure    // the answer came or the adapter's echo: they look the same, and nobody knows yet if it echoes
    };
    LineEvent();

    Kind kind;
    int station;
    bool over;     // Exchange: the driver's operation is finished, well or badly; else the same is sent again, or
                   // the other half of a bit write follows
    bool cyclic;   // Exchange: of a cyclic read
    bool again;    // Exchange: of something refused that is tried again, or a probe of a station that is down
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
    qint64 passUs;  // PassDone: from its start
    QString text;   // ReadsChanged: in words
};

/// The engine. One at a time in a process, since there is one driver, which it binds and unbinds, callbacks and station
/// table included: what is queued in the driver then is dropped, before and after. A driver that is bound is left
/// alone, and one that is bound anew under way is given up: see hasDriver. Ask for writes and one-shot reads through
/// it, for the driver drops those of a station that is down without a word.
class Line {
public:
    // ---- Line's thread. ----

    /// Settings out of range count as the nearest value. While it runs, and while the destructor does, no other thread
    /// is in a call of the driver.
    Line(const LineSettings &settings, qint64 nowUs);
    ~Line();

    /// Bytes that have arrived, in any portions; everything up to nowUs goes in before next() is called.
    void received(const QByteArray &bytes, qint64 nowUs);
    /// What to do now.
    Step next(qint64 nowUs);
    /// The bytes of the last Step::Send have been handed to the port.
    void sent(qint64 nowUs);
    /// The port was closed and opened again. Operations that are queued or out fail, in the order of asking: nobody
    /// wants an old write on a machine later. The cyclic reads go on after the silence.
    void restart(qint64 nowUs);

    /// Replaces the variables that are read over and over. All of them are usable.
    /// @return requests in a pass; 0: none.
    int watch(const QVector<Variable> &variables, qint64 nowUs);
    /// Queue an operation of a usable variable. Its end is a LineEvent. Writes go before reads, and both before cyclic
    /// reads; after five writes in a row a read goes, after five operations a cyclic read.
    /// For a broadcast set the station of a usable variable to 0, but not of bits inside words; it is done when the
    /// turnaround is over.
    /// While stations are down, an operation is a probe and gets one try: one in a pass of the others and in a reply
    /// lifetime, whatever the station, unless nobody else has anything to do. What was asked of that station meanwhile
    /// fails with it.
    /// While nobody knows whether the adapter echoes, writes wait for cyclic reads to show it, two lifetimes at most. A
    /// host that has none sets echo, see knowsEcho.
    /// @param values  as GetRegisterData gives them: 1 byte per bit, 2 per register, 4 per 32-bit value.
    /// @return its number, above 0; 0: refused, too many are queued, values are more than a request holds, or the
    ///         driver is another's.
    int readOnce(const Variable &variable);
    int write(const Variable &variable, const QByteArray &values);

    /// Takes the oldest event. Beyond some thousands that nobody takes, those of exchanges and passes are dropped; no
    /// other is.
    bool takeEvent(LineEvent *event);

    /// Of a variable that is watched.
    ValueState stateOf(const Variable &variable, qint64 nowUs) const;

    /// Whether the driver is bound to this engine. False: another engine or the host had bound it before (unbind it:
    /// SetComInfo(nullptr)), or the host has bound it anew since. Then nothing is sent, watched or asked for, what was
    /// asked for fails, no value is fresh, and the driver is not touched: a new record with a request outstanding would
    /// let writes be reported that were never sent. What this engine had begun in the driver stays there for its new
    /// owner, who may still send it: an operation, cyclic reads, stations taken out. A host that wants the driver back
    /// destroys the engine first, which leaves it empty, and does not replace its callbacks meanwhile.
    bool hasDriver() const;

    bool isDown(int station) const;
    /// When a station that is down is asked next, unless an operation or its answer comes before. Of no meaning for
    /// others.
    qint64 nextProbeUs(int station) const;
    /// Whether it is known if the adapter echoes: after three reads. While it is not, the answer to a write of a single
    /// register or coil is taken for its echo, and the write fails with NotSure though it is carried out. Where bytes
    /// stand before every answer it is never known; set echo there.
    bool knowsEcho() const;
    int requestsPerPass() const;
    /// What a pass takes on a line without faults.
    qint64 plannedPassUs() const;
    /// Counts on; another thread gets a copy made here.
    const LineStatistics &statistics() const;

    // ---- Any thread. ----

    /// The last known values; elements never read are zeros. Takes the driver's cacheMutex. While no line exists: as
    /// GetRegisterData says.
    static QByteArray values(const Variable &variable);

private:
    Line(const Line &);
    Line &operator=(const Line &);
    struct Parts;
    Parts *parts_;
};

}  // namespace dravo

#endif  // KORVEL_DRAVO_LINE_H
