// The engine put together: the call loop, the reads it serves, what is known of their values, and the passes over them.
#include <limits>

#include "line/call_loop.h"
#include "line/cyclic_reads.h"
#include "line/line_settings.h"
#include "line/pass_clock.h"
#include "line/value_states.h"
#include "line/variable.h"

namespace dravo {

namespace {

const int kMostEvents = 4096;        // then those of exchanges that nobody takes go
const int kMostReads = 1000;         // requests queued; the driver's queue of one-shot reads ends at 1024
const int kMostWrites = 10000;       // the other one has no end of its own
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
          mayRetry(true),
          lastOperation(0) {}

    Step next(qint64 hostUs);
    void digest(const LineEvent &event, qint64 nowUs);
    void checkPass(qint64 nowUs);
    void tell(const LineEvent &event);
    int queued(const Variable &variable, int most);

    LineSettings settings;
    LineStatistics statistics;
    DriverPort port;
    CallLoop loop;
    CyclicReads reads;
    ValueStates states;
    PassClock passes;
    bool mayRetry;  // one of the refused reads, in this pass
    int lastOperation;
    QList<LineEvent> events;
};

// One thing at a time, so that what a reply taught is in the driver's list before the next request is taken from it.
Step Line::Parts::next(qint64 hostUs) {
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
        const bool mayFetch = loop.queuedRequests() > 0 || passes.isDue(nowUs);
        Step step = loop.next(nowUs, mayFetch);
        const QList<Elements> written = loop.takeWritten();
        for (int i = 0; i < written.size(); ++i) {
            states.writeStarted(written.at(i));
        }
        const QList<LineEvent> news = loop.takeEvents();
        for (int i = 0; i < news.size(); ++i) {
            digest(news.at(i), nowUs);
        }
        if (step.kind == Step::Send || news.isEmpty()) {
            if (step.kind == Step::Wait) {
                if (mayRetry || reads.requests().isEmpty()) {
                    step.untilUs = qMin(step.untilUs, reads.nextRetryUs());
                }
                step.untilUs = mayFetch ? step.untilUs : qMin(step.untilUs, passes.dueUs());
            }
            return step;
        }
    }
}

void Line::Parts::digest(const LineEvent &event, qint64 nowUs) {
    tell(event);
    if (event.kind == LineEvent::StationDown) {
        checkPass(nowUs);
    }
    if (event.kind != LineEvent::Exchange || !event.over || (!event.cyclic && !event.again)) {
        return;
    }
    const Elements elements = {event.station, event.elemType, event.address, event.count};
    states.readFinished(elements, event.failure == LineEvent::None, event.code, event.exceptionCode, nowUs);
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

// The number of a new operation that the driver cuts into requests; 0: too many are queued.
int Line::Parts::queued(const Variable &variable, int most) {
    const ReadLimits limits = readLimits(variable.elements.elemType, settings.frameLimit);
    const bool bitInWord = variable.kind == BitValue && variable.elements.elemType != variable.elemType;
    const int values = bitInWord ? variable.count : variable.elements.count / limits.elementsPerRead + 2;
    if (loop.queuedRequests() + values > most) {
        return 0;
    }
    lastOperation = lastOperation == std::numeric_limits<int>::max() ? 1 : lastOperation + 1;
    loop.operationQueued(lastOperation, variable.station, values);
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
    parts_->loop.restart(nowUs);
}

int Line::watch(const QVector<Variable> &variables, qint64 nowUs) {
    parts_->reads.watch(variables);
    parts_->states.keepOnly(variables);
    parts_->reads.update();
    parts_->passes.begin(parts_->reads.requests(), qMax(parts_->loop.nowUs(), boundedUs(nowUs)));
    return parts_->reads.requests().size();
}

int Line::readOnce(const Variable &variable) {
    const int operation = isStation(variable.station) ? parts_->queued(variable, kMostReads) : 0;
    if (operation != 0) {
        RW_VAR record = readRecord(variable);
        const RW_VAR own = parts_->port.ownRecord();
        record.remoteMode = own.remoteMode;
        record.nodeId = own.nodeId;
        parts_->port.readOnce(operation, record);
    }
    return operation;
}

int Line::write(const Variable &variable, const QByteArray &values) {
    const bool bits = variable.kind == BitValue;
    const bool coils = bits && variable.elements.elemType == variable.elemType;
    // A bit inside a word is read first, and nobody answers a broadcast.
    const bool hasForm = isStation(variable.station) || (variable.station == 0 && (coils || !bits));
    const bool refused = !hasForm || (coils && variable.count > kMostWrittenCoils);
    const int operation = refused ? 0 : parts_->queued(variable, kMostWrites);
    if (operation != 0) {
        parts_->port.write(operation, readRecord(variable), values);
        parts_->states.writeStarted(variable.elements);  // after a failed request the cache shows it already
    }
    return operation;
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
    }
    return state;
}

QByteArray Line::values(const Variable &variable) {
    QByteArray bytes;
    GetRegisterData(QString(), variable.elemType, variable.addressText, variable.station, bytes, variable.driverCount);
    return bytes;
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
