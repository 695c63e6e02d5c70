// The engine put together: the call loop, the reads it serves, what is known of their values, and the passes over them.
#include <limits>

#include "line/call_loop.h"
#include "line/cyclic_reads.h"
#include "line/line_settings.h"
#include "line/operation_limits.h"
#include "line/operation_turns.h"
#include "line/pass_clock.h"
#include "line/value_states.h"
#include "line/variable.h"

namespace dravo {

namespace {

const int kMostEvents = 4096;        // then those of exchanges that nobody takes go
const int kMostWrittenCoils = 1968;  // that one Modbus write carries; the driver sends coils in one request
const int kStalePasses = 3;

bool isStation(int number) {
    return number >= 1 && number <= 247;
}

const qint64 kLeastStaleUs = 1000000;

}  // namespace

struct Line::Parts {
    Parts(const LineSettings &given, qint64 nowUs)
        : settings(inRange(given)),
          port(settings),
          loop(settings, port, statistics, nowUs),
          reads(settings, port),
          passes(settings.passPeriodUs),
          turns(settings),
          mayRetry(true),
          lastOperation(0) {}

    Step next(qint64 hostUs);
    Step rest(qint64 hostUs);
    void loseAll(qint64 hostUs);
    void startProbes();
    void startOperation();
    void loseOperations(int station);
    bool digestNews(qint64 nowUs);
    void digest(const LineEvent &event, qint64 nowUs);
    void digestRead(const LineEvent &event, qint64 nowUs);
    void checkPass(qint64 nowUs);
    void tell(const LineEvent &event);
    int ask(const Variable &variable, bool isWrite, const QByteArray &values);

    LineSettings settings;
    LineStatistics statistics;
    DriverPort port;
    CallLoop loop;
    CyclicReads reads;
    ValueStates states;
    PassClock passes;
    OperationTurns turns;
    bool mayRetry;  // one of the refused reads, in this pass
    int lastOperation;
    QList<LineEvent> events;
};

// One thing at a time, so that what a reply taught is in the driver's list before the next request is taken from it.
Step Line::Parts::next(qint64 hostUs) {
    if (!port.hasDriver()) {
        return rest(hostUs);
    }
    loop.received(QByteArray(), hostUs);
    const qint64 nowUs = loop.nowUs();
    for (;;) {
        if (reads.update()) {
            passes.begin(reads.requests(), nowUs);
        }
        if ((mayRetry || reads.requests().isEmpty()) && reads.nextRetryUs() <= nowUs) {
            reads.retryRefused(nowUs);
            mayRetry = false;
        }
        startProbes();
        startOperation();
        const bool mayFetch = loop.isAsked() || passes.isDue(nowUs);
        Step step = loop.next(nowUs, mayFetch);
        const QList<Elements> written = loop.takeWritten();
        for (int i = 0; i < written.size(); ++i) {
            states.becameUnsure(written.at(i));
        }
        const bool hadNews = digestNews(nowUs);
        if (step.kind == Step::Send || !hadNews) {
            if (step.kind == Step::Wait) {
                if (mayRetry || reads.requests().isEmpty()) {
                    step.untilUs = qMin(step.untilUs, reads.nextRetryUs());
                }
                step.untilUs = qMin(step.untilUs, qMin(loop.stations().nextDueUs(), turns.nextUs(loop)));
                step.untilUs = mayFetch ? step.untilUs : qMin(step.untilUs, passes.dueUs());
                step.untilUs = qMin(step.untilUs, loop.inputEndsUs());
            }
            return step;
        }
    }
}

// The driver is another's.
Step Line::Parts::rest(qint64 hostUs) {
    loseAll(hostUs);
    Step step = {Step::Wait, QByteArray(), std::numeric_limits<qint64>::max()};
    return step;
}

// Operations that are queued or out fail, in the order of asking.
void Line::Parts::loseAll(qint64 hostUs) {
    QMap<int, int> lost = loop.restart(hostUs);
    const QList<HostOperation> queued = turns.queue().takeAll();
    for (int i = 0; i < queued.size(); ++i) {
        lost.insert(queued.at(i).number, queued.at(i).variable.station);
    }
    for (QMap<int, int>::const_iterator it = lost.constBegin(); it != lost.constEnd(); ++it) {
        loop.tellLost(it.key(), it.value());
    }
    digestNews(loop.nowUs());
}

void Line::Parts::startProbes() {
    const QList<int> due = loop.takeDueProbes();
    for (int i = 0; i < due.size(); ++i) {
        RW_VAR probe = RW_VAR();
        if (reads.probeOf(due.at(i), &probe)) {
            loop.probe(probe);
        }
    }
}

void Line::Parts::startOperation() {
    HostOperation operation = HostOperation();
    if (!turns.take(loop, passes, &operation)) {
        return;
    }
    loop.operationStarts(operation.number, operation.variable.station);
    port.start(operation);
    if (operation.isWrite) {
        states.becameUnsure(operation.variable.elements);  // after a failed request the cache shows it now
    }
}

// What was asked of a station and not begun has failed: nobody wants it on a machine later.
void Line::Parts::loseOperations(int station) {
    const QList<HostOperation> lost = turns.queue().takeAllOf(station);
    for (int i = 0; i < lost.size(); ++i) {
        loop.tellLost(lost.at(i).number, lost.at(i).variable.station);
    }
}

bool Line::Parts::digestNews(qint64 nowUs) {
    const QList<LineEvent> news = loop.takeEvents();
    for (int i = 0; i < news.size(); ++i) {
        digest(news.at(i), nowUs);
    }
    return !news.isEmpty();
}

void Line::Parts::digest(const LineEvent &event, qint64 nowUs) {
    tell(event);
    if (event.kind == LineEvent::StationDown) {
        checkPass(nowUs);
    }
    if (event.failure == LineEvent::NotSure && event.write) {
        turns.echoIsUnclear();
    }
    if (event.kind == LineEvent::Operation && !event.done && loop.stations().isDown(event.station)) {
        loseOperations(event.station);
    }
    if (event.kind == LineEvent::Exchange && event.over && !event.write) {
        digestRead(event, nowUs);
    }
}

void Line::Parts::digestRead(const LineEvent &event, qint64 nowUs) {
    const Elements elements = {event.station, event.elemType, event.address, event.count};
    const bool good = event.failure == LineEvent::None;
    const bool isOwn = event.cyclic || event.again;  // else the host's
    if (!isOwn) {
        if (good) {
            states.storedByHost(elements);
        }
        return;
    }
    states.readFinished(elements, good, event.code, event.exceptionCode, nowUs);
    LineEvent changed;
    changed.text = reads.finished(event, nowUs);
    if (!changed.text.isEmpty()) {
        changed.kind = LineEvent::ReadsChanged;
        changed.station = event.station;
        tell(changed);
    }
    if (event.cyclic && passes.isDue(nowUs)) {  // else it slipped in between writes
        passes.finished(elements);
        checkPass(nowUs);
    }
}

void Line::Parts::checkPass(qint64 nowUs) {
    if (!passes.isOver(loop.stations())) {
        return;
    }
    LineEvent done;
    done.kind = LineEvent::PassDone;
    done.passUs = passes.lastedUs(nowUs);
    tell(done);
    mayRetry = true;
    turns.passIsOver();
    passes.begin(reads.requests(), qMax(nowUs, passes.dueUs()));
}

void Line::Parts::tell(const LineEvent &event) {
    events.append(event);
    for (int i = 0; events.size() > kMostEvents && i < events.size(); ++i) {
        if (events.at(i).kind == LineEvent::Exchange || events.at(i).kind == LineEvent::PassDone) {
            events.removeAt(i);
            break;
        }
    }
}

// The number of a new operation that the driver will cut into requests; 0: too many are queued, or the driver is
// another's.
int Line::Parts::ask(const Variable &variable, bool isWrite, const QByteArray &values) {
    const int requests = operationRequests(variable, isWrite, settings.frameLimit);
    if (!port.hasDriver() || !turns.queue().hasRoom(isWrite, requests)) {
        return 0;
    }
    lastOperation = lastOperation == std::numeric_limits<int>::max() ? 1 : lastOperation + 1;
    const HostOperation operation = {lastOperation, isWrite, variable, values, requests};
    turns.queue().add(operation);
    return lastOperation;
}

Line::Line(const LineSettings &settings, qint64 nowUs) : parts_(new Parts(settings, nowUs)) {}

Line::~Line() {
    delete parts_;
}

void Line::received(const QByteArray &bytes, qint64 nowUs) {
    parts_->loop.received(bytes, nowUs);
}

Step Line::next(qint64 nowUs) {
    return parts_->next(nowUs);
}

void Line::sent(qint64 nowUs) {
    parts_->loop.sent(nowUs);
}

void Line::restart(qint64 nowUs) {
    parts_->loseAll(nowUs);
    parts_->turns.echoIsUnclear();
    parts_->passes.begin(parts_->reads.requests(), parts_->loop.lineFreeUs());
}

int Line::watch(const QVector<Variable> &variables, qint64 nowUs) {
    parts_->reads.watch(variables);
    parts_->states.keepOnly(variables);
    parts_->reads.update();
    const qint64 us = qMax(parts_->loop.nowUs(), boundedUs(nowUs));
    parts_->passes.begin(parts_->reads.requests(), qMax(us, parts_->loop.lineFreeUs()));
    return parts_->reads.requests().size();
}

int Line::readOnce(const Variable &variable) {
    return isStation(variable.station) ? parts_->ask(variable, false, QByteArray()) : 0;
}

int Line::write(const Variable &variable, const QByteArray &values) {
    const bool bits = variable.kind == BitValue;
    const bool coils = bits && variable.elements.elemType == variable.elemType;
    // A bit inside a word is read first, and nobody answers a broadcast.
    const bool hasForm = isStation(variable.station) || (variable.station == 0 && (coils || !bits));
    const bool refused = !hasForm || (coils && variable.count > kMostWrittenCoils);
    return refused ? 0 : parts_->ask(variable, true, values);
}

bool Line::takeEvent(LineEvent *event) {
    if (parts_->events.isEmpty()) {
        return false;
    }
    *event = parts_->events.takeFirst();
    return true;
}

ValueState Line::stateOf(const Variable &variable, qint64 nowUs) const {
    const qint64 planned =
        qMax(kLeastStaleUs, kStalePasses * qMax(parts_->reads.plannedUs(), parts_->settings.passPeriodUs));
    const qint64 staleAfterUs = parts_->settings.staleAfterUs > 0 ? parts_->settings.staleAfterUs : planned;
    const qint64 us = qMax(parts_->loop.nowUs(), boundedUs(nowUs));
    ValueState state = parts_->states.stateOf(variable, us, staleAfterUs);
    if (parts_->reads.isRefused(variable)) {
        state.condition = NotReadable;
    } else if (isDown(variable.station)) {
        state.condition = Down;
    } else if (state.condition == Fresh && !hasDriver()) {
        state.condition = Stale;  // whoever has the driver may change what is known
    }
    return state;
}

QByteArray Line::values(const Variable &variable) {
    QByteArray bytes;
    GetRegisterData(QString(), variable.elemType, variable.addressText, variable.station, bytes, variable.driverCount);
    return bytes;
}

bool Line::hasDriver() const {
    return parts_->port.hasDriver();
}

bool Line::isDown(int station) const {
    return parts_->loop.stations().isDown(station);
}

qint64 Line::nextProbeUs(int station) const {
    return parts_->loop.stations().nextProbeUs(station);
}

bool Line::knowsEcho() const {
    return parts_->loop.knowsEcho();
}

int Line::requestsPerPass() const {
    return parts_->reads.requests().size();
}

qint64 Line::plannedPassUs() const {
    return parts_->reads.plannedUs();
}

const LineStatistics &Line::statistics() const {
    return parts_->statistics;
}

}  // namespace dravo
