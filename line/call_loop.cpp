#include "line/call_loop.h"

#include <limits>

#include "line/frame_bytes.h"

namespace dravo {

namespace {

const qint64 kNever = std::numeric_limits<qint64>::max();
const int kLongestModbusFrame = 256;
const int kNoStation = -1;

bool isFinal(int exceptionCode) {
    return exceptionCode >= 1 && exceptionCode <= 3;  // illegal function, address, value: it stays so
}

bool isBusy(int exceptionCode) {
    return exceptionCode == 5 || exceptionCode == 6;
}

Step waitUntil(qint64 us) {
    Step step = {Step::Wait, QByteArray(), us};
    return step;
}

bool isCyclic(const RW_VAR &var) {
    return var.ownerId == 0 && var.itemId == kCyclicItemId && var.accessFlag == 0;
}

}  // namespace

CallLoop::CallLoop(const LineSettings &settings, DriverPort &port, LineStatistics &statistics, qint64 nowUs)
    : settings_(settings),
      times_(settings),
      port_(port),
      statistics_(statistics),
      finder_(boundedUs(nowUs)),
      outstanding_(settings.answersMayDouble),
      echo_(settings.echo),
      stations_(settings),
      requests_(0),
      nowUs_(boundedUs(nowUs)),
      lineFreeUs_(nowUs_),
      pauseUntilUs_(nowUs_),
      phase_(Idle),
      current_() {
    beSilent();
}

void CallLoop::beSilent() {
    lineFreeUs_ = nowUs_ + settings_.startSilenceUs;
}

// A write that was asked for before the device went must not move a machine when it comes back, however much later.
QMap<int, int> CallLoop::restart(qint64 nowUs) {
    advance(nowUs);
    finder_.clear();
    echo_.restart();
    port_.dropOperations();
    probed_.clear();
    const QMap<int, int> lost = operations_;
    operations_.clear();
    const QList<int> down = stations_.down();
    for (int i = 0; i < down.size(); ++i) {
        port_.setStation(down.at(i), false);
    }
    phase_ = Idle;
    beSilent();
    stations_.probeFrom(lineFreeUs_);  // who knows what was plugged in
    return lost;
}

void CallLoop::operationStarts(int operation, int station) {
    operations_.insert(operation, station);
    if (stations_.isDown(station)) {
        port_.setStation(station, true);  // or the driver would drop it without a word
    }
}

void CallLoop::tellLost(int operation, int station) {
    LineEvent over;
    over.kind = LineEvent::Operation;
    over.operation = operation;
    over.station = station;
    over.code = kResultLocalNoReply + 1;
    over.failure = LineEvent::NoAnswer;
    events_.append(over);
}

void CallLoop::probe(const RW_VAR &read) {
    if (!probed_.contains(read.station)) {
        port_.setStation(read.station, true);
        probed_.append(read.station);
        port_.readAgain(read);
    }
}

// The driver drops what is queued for the station, a probe too.
void CallLoop::silence(int station) {
    port_.setStation(station, false);
    probed_.removeAll(station);
}

QList<LineEvent> CallLoop::takeEvents() {
    const QList<LineEvent> taken = events_;
    events_.clear();
    return taken;
}

QList<Elements> CallLoop::takeWritten() {
    const QList<Elements> taken = written_;
    written_.clear();
    return taken;
}

bool CallLoop::hasOperations(int station) const {
    for (QMap<int, int>::const_iterator it = operations_.constBegin(); it != operations_.constEnd(); ++it) {
        if (it.value() == station) {
            return true;
        }
    }
    return false;
}

void CallLoop::advance(qint64 nowUs) {
    nowUs_ = qMax(nowUs_, boundedUs(nowUs));
}

void CallLoop::received(const QByteArray &bytes, qint64 nowUs) {
    advance(nowUs);
    finder_.received(bytes, nowUs_);
    sortInput();
}

// Frames first, then the entries that nothing can answer any more: a frame counts when it arrived.
void CallLoop::sortInput() {
    const bool silent = nowUs_ >= finder_.lastByteUs() + times_.silenceUs();
    Frame frame;
    while (finder_.take(outstanding_, echo_, silent, &frame)) {
        sortOut(frame);
    }
    const qint64 noise = finder_.takeNoise();
    statistics_.received(kNoStation, int(noise), times_.charactersUs(noise));
    const qint64 sortedUs = finder_.isArriving() ? finder_.arrivingSinceUs() : nowUs_;
    outstanding_.expire(sortedUs);
    echo_.expire(sortedUs);
}

void CallLoop::sortOut(const Frame &frame) {
    if (phase_ == Waiting && frame.start >= current_.positionAtSending) {
        current_.framedBytes += frame.bytes.size();
    }
    const int station = byteOf(frame.bytes, 0);
    statistics_.received(station, frame.bytes.size(), times_.charactersUs(frame.bytes.size()));
    if (echo_.take(frame)) {
        current_.echoed = current_.echoed || (!echo_.isKnown() && frame.bytes == current_.request.shape.frame);
        statistics_.echoReceived(station);
        return;
    }
    const bool waits = phase_ == Waiting && !current_.answered;
    const Outstanding::Match match = outstanding_.take(frame, waits ? &current_.request : nullptr);
    if (match == Outstanding::Foreign) {
        statistics_.foreignDropped(station);
        return;
    }
    if (stations_.heard(station)) {
        port_.setStation(station, true);
        LineEvent up;
        up.kind = LineEvent::StationUp;
        up.station = station;
        events_.append(up);
    }
    current_.heard = current_.heard || station == current_.request.shape.station;
    if (match != Outstanding::Answer) {
        statistics_.lateDropped(station);
        return;
    }
    current_.answered = true;
    current_.answer = frame;
}

Step CallLoop::next(qint64 nowUs, bool mayFetch) {
    received(QByteArray(), nowUs);
    qint64 untilUs = nowUs_;
    switch (phase_) {
        case Idle:
            if (!mayFetch) {
                return waitUntil(kNever);
            }
            if (!fetch()) {
                return waitUntil(kNever);
            }
            return next(nowUs, mayFetch);
        case Ready:
            untilUs = readyUs();
            return nowUs_ < untilUs ? waitUntil(untilUs) : send();
        case Waiting:
            if (isConcluded(&untilUs)) {
                conclude();
            }
            return waitUntil(untilUs);
        case Turnaround:
            if (nowUs_ < lineFreeUs_) {
                return waitUntil(lineFreeUs_);
            }
            concludeBroadcast();
            return waitUntil(nowUs_);
    }
    return waitUntil(nowUs_);
}

// Takes the driver's next request. False: there is none.
bool CallLoop::fetch() {
    const Protocol *request = port_.request();
    if (!request) {
        probed_.clear();
        return false;
    }
    current_ = Current();
    current_.request.number = ++requests_;
    current_.request.shape = shapeOf(*request, port_.remote());
    current_.var = request->var;
    current_.request.cyclic = isCyclic(request->var);
    current_.isFirstTry = true;
    current_.readySinceUs = nowUs_;
    port_.startTries();
    const int station = current_.var.station;
    probed_.removeAll(station);
    if (stations_.isDown(station)) {
        port_.endTries();  // a probe, whatever was asked for: one try
        if (!hasOperations(station)) {
            silence(station);
        }
    }
    // The read half of a bit write shows the bit already.
    if (request->var.accessFlag != 0 || request->var.param1 == kMergeRead) {
        written_.append(writtenElements(request->var));
    }
    phase_ = Ready;
    current_.heldUs = outstanding_.heldUntil(current_.request, nowUs_) - nowUs_;
    return true;
}

// When the request may go out. A line that never falls silent is not waited for.
qint64 CallLoop::readyUs() const {
    qint64 us = qMax(lineFreeUs_, pauseUntilUs_);
    if (current_.isFirstTry) {
        us = qMax(us, outstanding_.heldUntil(current_.request, nowUs_));
    }
    if (finder_.position() == 0) {
        return us;
    }
    const qint64 quietUs = finder_.lastByteUs() + (finder_.isArriving() ? times_.silenceUs() : times_.gapUs());
    const qint64 patienceUs = settings_.timeoutUs + times_.charactersUs(kLongestModbusFrame);
    return qMax(us, qMin(quietUs, qMax(us, current_.readySinceUs) + patienceUs));
}

qint64 CallLoop::inputEndsUs() const {
    return finder_.isArriving() ? finder_.lastByteUs() + times_.silenceUs() : kNever;
}

Step CallLoop::send() {
    const QByteArray &frame = current_.request.shape.frame;
    current_.positionAtSending = finder_.position();
    if (current_.isFirstTry) {
        current_.request.position = finder_.position();
    }
    current_.framedBytes = 0;
    current_.answered = false;
    phase_ = current_.request.shape.station == 0 ? Turnaround : Waiting;
    setEndOfSending();
    const qint64 expiresUs = current_.endOfSendingUs + settings_.lifetimeUs;
    outstanding_.sent(current_.request, current_.positionAtSending, expiresUs);
    echo_.sent(current_.request.shape, current_.positionAtSending, expiresUs);
    const int station = current_.request.shape.station;
    statistics_.sent(station, frame.size(), times_.charactersUs(frame.size()), !current_.isFirstTry);
    if (current_.heldUs > 0) {
        statistics_.waited(station, qMin(current_.heldUs, nowUs_ - current_.readySinceUs));
        current_.heldUs = 0;
    }
    Step step = {Step::Send, frame, nowUs_};
    return step;
}

void CallLoop::setEndOfSending() {
    current_.endOfSendingUs = nowUs_ + times_.charactersUs(current_.request.shape.frame.size());
    lineFreeUs_ = current_.endOfSendingUs + (phase_ == Turnaround ? settings_.turnaroundUs : times_.gapUs());
}

void CallLoop::sent(qint64 nowUs) {
    advance(nowUs);
    if (phase_ != Waiting && phase_ != Turnaround) {
        return;
    }
    setEndOfSending();
    echo_.delayLast(current_.endOfSendingUs + settings_.lifetimeUs);
    if (phase_ == Waiting) {
        outstanding_.delayLast(current_.endOfSendingUs + settings_.lifetimeUs);
    }
}

// Whether the wait for an answer is over. A frame that has begun in time is let finish; a line that babbles on is not.
bool CallLoop::isConcluded(qint64 *untilUs) const {
    if (current_.answered) {
        return true;
    }
    const bool waitsOn = !port_.isLastTry() && stations_.answeredLast(current_.var.station);
    const qint64 patienceUs = waitsOn ? settings_.lifetimeUs : settings_.timeoutUs;
    const qint64 deadlineUs = current_.endOfSendingUs + patienceUs;
    const qint64 silentUs = finder_.lastByteUs() + times_.silenceUs();
    const bool arriving = finder_.isArriving() && nowUs_ < silentUs;
    if (nowUs_ < deadlineUs) {
        *untilUs = arriving ? qMin(deadlineUs, silentUs) : deadlineUs;
        return false;
    }
    const qint64 latestUs = deadlineUs + times_.charactersUs(kLongestModbusFrame);
    if (arriving && nowUs_ < latestUs) {
        *untilUs = qMin(silentUs, latestUs);
        return false;
    }
    return true;
}

void CallLoop::conclude() {
    if (!current_.request.shape.looksAnswered && !current_.request.shape.isWrite) {
        echo_.readFinished(current_.answered && current_.isFirstTry &&
                           current_.answer.start == current_.positionAtSending);
    }
    if (!current_.answered) {
        const bool silence = finder_.position() - current_.positionAtSending == current_.framedBytes;
        finishTry(port_.judge(silence ? QByteArray() : DriverPort::refusable()),
                  current_.echoed ? LineEvent::NotSure
                  : silence       ? LineEvent::NoAnswer
                                  : LineEvent::Damaged,
                  0);
        return;
    }
    const QByteArray &answer = current_.answer.bytes;
    if (!isException(answer)) {
        const DriverPort::Verdict verdict = port_.judge(answer);
        finishTry(verdict, verdict.good ? LineEvent::None : LineEvent::Damaged, 0);
        return;
    }
    const int exceptionCode = byteOf(answer, 2);
    if (isFinal(exceptionCode)) {
        port_.endTries();
    }
    const DriverPort::Verdict verdict = port_.judge(answer);
    if (isBusy(exceptionCode) && !verdict.over) {
        pauseUntilUs_ = nowUs_ + settings_.busyPauseUs;
    }
    finishTry(verdict, LineEvent::Refused, exceptionCode);
}

void CallLoop::concludeBroadcast() {
    finishTry(port_.judge(QByteArray()), LineEvent::None, 0);
}

void CallLoop::finishTry(const DriverPort::Verdict &verdict, LineEvent::Failure failure, int exceptionCode) {
    LineEvent exchange;
    exchange.kind = LineEvent::Exchange;
    exchange.station = current_.var.station;
    exchange.over = verdict.over;
    exchange.cyclic = current_.request.cyclic;
    exchange.again = DriverPort::isReadAgain(current_.var);
    exchange.write = current_.request.shape.isWrite;
    exchange.elemType = current_.var.elemType;
    exchange.address = current_.var.address;
    exchange.count = current_.var.count;
    exchange.code = verdict.code;
    exchange.failure = failure;
    exchange.exceptionCode = exceptionCode;
    exchange.request = current_.request.shape.frame;
    exchange.reply = current_.answered ? current_.answer.bytes : QByteArray();
    // An answer may be earlier: a pseudo-terminal, or a port that began to send before it had taken all, is quicker
    // than the baud rate says.
    exchange.replyUs = current_.answered ? qMax<qint64>(0, current_.answer.arrivedUs - current_.endOfSendingUs) : -1;
    events_.append(exchange);
    count(exchange);
    if (verdict.over && !verdict.good && !current_.heard && failure != LineEvent::NotSure) {
        missed(current_.var.station);
    }
    tellOperations(exchange);
    const bool again = !verdict.good && !verdict.over;
    current_.isFirstTry = false;
    current_.readySinceUs = nowUs_;
    phase_ = again ? Ready : Idle;
}

void CallLoop::count(const LineEvent &exchange) {
    const int station = current_.request.shape.station;
    if (exchange.failure == LineEvent::None && exchange.replyUs >= 0) {
        statistics_.answered(station, exchange.replyUs);
    } else if (exchange.failure == LineEvent::Refused) {
        statistics_.exceptionReceived(station, exchange.exceptionCode);
    }
    if (exchange.over && exchange.failure != LineEvent::None) {
        statistics_.failed(station, exchange.failure == LineEvent::Damaged   ? LineCounts::Damaged
                                    : exchange.failure == LineEvent::Refused ? LineCounts::Refused
                                                                             : LineCounts::NoAnswer);
    }
}

void CallLoop::tellOperations(const LineEvent &exchange) {
    const QList<DriverPort::Finished> finished = port_.takeFinished();
    for (int i = 0; i < finished.size(); ++i) {
        LineEvent over = exchange;
        over.operation = finished.at(i).operation;
        over.done = finished.at(i).done;
        tellOperation(over);
    }
}

void CallLoop::tellOperation(LineEvent over) {
    over.kind = LineEvent::Operation;
    over.station = operations_.take(over.operation);
    events_.append(over);
    if (stations_.isDown(over.station) && !hasOperations(over.station)) {
        silence(over.station);
    }
}

void CallLoop::missed(int station) {
    const bool goesDown = stations_.missed(station, nowUs_, outstanding_.expectedUntil(station, nowUs_) + 1);
    if (stations_.isDown(station) && !hasOperations(station)) {
        silence(station);
    }
    if (goesDown) {
        LineEvent down;
        down.kind = LineEvent::StationDown;
        down.station = station;
        events_.append(down);
    }
}

}  // namespace dravo
