#include "fuzz/line_any_host.h"

#include "fuzz/promise.h"
#include "korvel_dravo_elements.h"
#include "korvel_dravo_port.h"
#include "line/line_settings.h"
#include "support/frame_text.h"

namespace {

constexpr Us kNever = INT64_MAX;
constexpr int kMostActs = 200;
constexpr int kMostTurns = 24;
constexpr int kUntaken = 256;
constexpr int kMostDroppableEvents = 4096;
constexpr int kReceivedKept = 1 << 16;
constexpr int kFarFuture = 50;  // bits of the longest pause

const Us kStarts[] = {0, -5000000, 1700000000000000, Us(1) << 58, -(Us(1) << 60)};
const int kStations[] = {1, 2, 3, 247};
const int kAddresses[] = {0, 1, 15, 100, 255, 256, 1023, 1024, 2047, 2048, 7999, 8000, 23535, 65534, 65535};
const int kCounts[] = {1, 2, 3, 8, 16, 61, 62, 63, 123, 125, 126, 1000, 1968, 1969, 2000};

/// A number near the bounds of what is in range, or any.
qint64 drawnNumber(Draws *draws, qint64 usual) {
    switch (draws->between(0, 15)) {
        case 0:
            return draws->between(-2, 2);
        case 1:
            return INT64_MIN + draws->between(0, 1);
        case 2:
            return INT64_MAX - draws->between(0, 1);
        case 3:
            return qint64(1) << draws->between(0, 62);
        case 4:
        case 5:
        case 6:
            return draws->between(0, 65535);
        default:
            return usual;
    }
}

int drawnInt(Draws *draws, int usual) {
    return int(qBound<qint64>(INT_MIN, drawnNumber(draws, usual), INT_MAX));
}

template <typename Choice, size_t Choices>
Choice pick(const Choice (&choices)[Choices], Draws *draws) {
    return choices[draws->between(0, qint64(Choices) - 1)];
}

QString addressText(int elemType, int address, Draws *draws) {
    const dravo::ElementType *type = dravo::findElementType(elemType);
    if (type->elementClass == dravo::BitInWordClass) {
        return QString::number(address) + QLatin1Char('.') + QString::number(draws->between(0, 15));
    }
    return QString::number(address, type->textBase);
}

}  // namespace

dravo::LineSettings AnyHost::drawnSettings(Draws *draws) {
    dravo::LineSettings given;
    given.baud = drawnInt(draws, 19200);
    given.bitsPerCharacter = drawnInt(draws, 11);
    given.timeoutUs = drawnNumber(draws, 100000);
    given.lifetimeUs = drawnNumber(draws, 0);
    given.startSilenceUs = drawnNumber(draws, 0);
    given.turnaroundUs = drawnNumber(draws, given.turnaroundUs);
    given.silenceUs = drawnNumber(draws, given.silenceUs);
    given.busyPauseUs = drawnNumber(draws, given.busyPauseUs);
    given.echo = dravo::EchoMode(draws->between(0, 2));
    given.answersMayDouble = draws->chance(0.2);
    given.retries = drawnInt(draws, 1);
    given.frameLimit = drawnInt(draws, 32);
    given.remoteNode = draws->chance(0.2) ? drawnInt(draws, 3) : -1;
    given.merge = draws->chance(0.5) ? dravo::MergeByTime : dravo::MergeByDriver;
    given.replyDelayUs = drawnNumber(draws, given.replyDelayUs);
    given.passPeriodUs = drawnNumber(draws, 0);
    given.staleAfterUs = drawnNumber(draws, 0);
    given.refusedRetryUs = drawnNumber(draws, given.refusedRetryUs);
    given.downAfter = drawnInt(draws, 3);
    given.firstProbeUs = drawnNumber(draws, given.firstProbeUs);
    given.longestProbeUs = drawnNumber(draws, given.longestProbeUs);
    return given;
}

AnyHost::AnyHost(Draws draws)
    : draws_(std::move(draws)),
      nowUs_(pick(kStarts, &draws_)),
      given_(drawnSettings(&draws_)),
      settings_(dravo::inRange(given_)),
      times_(settings_),
      line_(given_, nowUs_),
      untilUs_(nowUs_),
      freeUs_(nowUs_ + settings_.startSilenceUs) {}

void AnyHost::run() {
    for (int i = 0; i < kMostActs && !draws_.isSpent(); ++i) {
        act();
        settleUntilNothingIsDue();
        look();
    }
    takesEvents_ = true;
    restart();
}

void AnyHost::act() {
    switch (below(12)) {
        case 0:
            return watched_.isEmpty() || below(4) == 0 ? watch() : answer();
        case 1:
        case 2:
            return ask();
        case 3:
            return below(16) == 0 ? restart() : letMuchHappen();
        case 4: {
            QByteArray bytes;
            for (int i = below(12); i >= 0; --i) {
                bytes.append(char(below(256)));
            }
            return receive(bytes);
        }
        case 5:
            takesEvents_ = !takesEvents_;
            return;
        case 6:
        case 7:
        case 8:
            return answer();
        default:
            return letTimePass();
    }
}

bool AnyHost::drawnVariable(dravo::Variable *variable) {
    variable->elemType = below(dravo::kElementTypeCount);
    variable->station = pick(kStations, &draws_);
    const int address = below(2) == 0 ? below(32) : pick(kAddresses, &draws_);
    variable->addressText = addressText(variable->elemType, address, &draws_);
    variable->count = below(6) != 0 ? 1 + below(20) : pick(kCounts, &draws_);
    return dravo::resolve(variable).isEmpty();
}

void AnyHost::watch() {
    watched_.clear();
    for (int i = below(8); i > 0; --i) {
        dravo::Variable variable;
        if (drawnVariable(&variable)) {
            watched_.append(variable);
        }
    }
    const int requests = line_.watch(watched_, nowUs_);
    untouched_ = false;
    expect(watched_.isEmpty() == (requests == 0), "what is watched is not read");
    expect(requests == line_.requestsPerPass(), "the requests of a pass are counted in two ways");
}

void AnyHost::ask() {
    dravo::Variable variable;
    if (!drawnVariable(&variable)) {
        return;
    }
    const int kind = below(4);
    kind == 0 ? asked(line_.readOnce(variable)) : write(variable, kind == 1);
}

void AnyHost::write(dravo::Variable variable, bool everywhere) {
    const dravo::ElementClass elementClass = dravo::findElementType(variable.elemType)->elementClass;
    const bool bitInWord = elementClass == dravo::BitInWordClass;
    const int size = variable.kind == dravo::BitValue ? 1 : variable.kind == dravo::WordValue ? 2 : 4;
    const int bytes = below(8) == 0 ? below(300) : variable.count * size;  // more or fewer than there are values
    QByteArray values;
    for (int i = 0; i < bytes; ++i) {
        values.append(char(i < 8 ? below(256) : i));
    }
    variable.station = everywhere ? 0 : variable.station;
    const int operation = line_.write(variable, values);
    const bool tooMany = elementClass == dravo::BitClass && variable.count > 1968;
    expect(operation == 0 || !tooMany, "more coils than a frame holds are taken");
    expect(operation == 0 || !(everywhere && bitInWord), "a bit inside a word is written everywhere");
    asked(operation);
}

void AnyHost::asked(int operation) {
    untouched_ = false;
    if (operation != 0) {
        expect(operation > 0 && pending_.insert(operation).second, "an operation has the number of another");
    }
}

void AnyHost::restart() {
    line_.restart(nowUs_);
    untouched_ = false;
    judged_ = true;
    freeUs_ = nowUs_ + settings_.startSilenceUs;
    if (takesEvents_) {
        takeEvents();
        expect(pending_.empty(), "an operation outlives a restart");
    }
}

void AnyHost::receive(const QByteArray &bytes) {
    untouched_ = false;
    received_ = (received_ + bytes).right(kReceivedKept);
    line_.received(bytes, nowUs_);
}

// To what was sent last, as a controller would, or with something wrong with it.
void AnyHost::answer() {
    if (sent_.isEmpty()) {
        return;
    }
    QByteArray reply = drawnAnswer();
    const int wrong = below(24);
    if (wrong < 3) {
        reply = wrong == 0 ? reply.left(below(reply.size())) : wrong == 1 ? reply + reply : reply.mid(1);
    } else if (wrong == 3) {
        const int at = below(reply.size());
        reply[at] = char(reply.at(at) ^ 1 << below(8));
    } else if (wrong == 4) {
        reply = sent_ + reply;
    } else if (wrong == 5) {
        reply.prepend(char(below(256)));
    }
    if (below(8) != 0) {
        return receive(reply);
    }
    for (const char byte : reply) {  // in portions of one
        receive(QByteArray(1, byte));
        nowUs_ += below(3) * Us(1000);
        settle(nowUs_);
    }
}

QByteArray AnyHost::drawnAnswer() {
    const QByteArray request = atController(sent_);
    const int function = byteOf(request, 1);
    if (below(8) == 0) {
        return withCrc(request.left(1) + char(function | 0x80) + char(below(12)));
    }
    if (function > 4) {
        return withCrc(request.left(6));
    }
    const int count = wordOf(request, 4);
    const int bytes = function == 1 ? (count + 7) / 8 : 2 * count;
    return withCrc(request.left(2) + char(bytes) + QByteArray(bytes, char(below(256))));
}

void AnyHost::letTimePass() {
    switch (below(8)) {
        case 0:
            nowUs_ += below(65536);
            break;
        case 1:
            nowUs_ += Us(1) << below(kFarFuture);
            break;
        case 2:
            settle(nowUs_ - below(65536));  // clocks of several processors
            break;
        case 3:
            if (untilUs_ > nowUs_ + 1 && untilUs_ < kNever) {
                nowUs_ = untilUs_ - 1;
                settle(nowUs_);
                nowUs_ += 1;
            }
            break;
        default:
            nowUs_ = untilUs_ < kNever ? qMax(nowUs_, untilUs_ + below(2)) : nowUs_;
            break;
    }
    const Us farthest = Us(1) << 59;
    nowUs_ = qMin(nowUs_, farthest);
}

// An ordinary line for some turns; where nobody takes events, now and then for so many that the engine has to drop
// some.
void AnyHost::letMuchHappen() {
    const bool answers = below(4) != 0;
    const bool forLong = !takesEvents_ && below(8) == 7;
    for (int turn = below(kMostTurns) * (forLong ? kUntaken : 1); turn > 0; --turn) {
        if (answers && !sent_.isEmpty()) {
            receive(drawnAnswer());
        }
        settleUntilNothingIsDue();
        nowUs_ = untilUs_ < (Us(1) << 59) ? qMax(nowUs_, untilUs_) : nowUs_;
        settleUntilNothingIsDue();
    }
}

void AnyHost::settleUntilNothingIsDue() {
    settle(nowUs_);
    for (int calls = 0; untilUs_ <= nowUs_; ++calls) {
        expect(calls < 3, "the engine is never done at one time");
        settle(nowUs_);
    }
}

void AnyHost::settle(Us us) {
    const bool tooEarly = untouched_ && nowUs_ < untilUs_;
    const dravo::Step step = line_.next(us);
    expect(!tooEarly || step.kind == dravo::Step::Wait, "a frame goes out before the time that was named");
    const bool anyLeft = !tookEvents_;
    expect(takeEvents() == 0 || anyLeft || !tooEarly, "something happens before the time that was named");
    take(step);
}

void AnyHost::take(const dravo::Step &step) {
    untouched_ = true;
    if (step.kind == dravo::Step::Wait) {
        untilUs_ = step.untilUs;
        return;
    }
    looksRight(step.bytes);
    expect(nowUs_ >= freeUs_, "a frame goes out while the line is not free");
    expect(judged_ || eventsMissed_, "a frame goes out before the one before it was judged");
    eventsMissed_ = !takesEvents_;
    judged_ = false;
    sent_ = step.bytes;
    nowUs_ += below(20) == 0 ? below(65536) : 0;
    line_.sent(nowUs_);
    const bool everywhere = byteOf(atController(sent_), 0) == 0;
    freeUs_ = nowUs_ + times_.charactersUs(sent_.size()) + (everywhere ? settings_.turnaroundUs : times_.gapUs());
    untilUs_ = nowUs_;
    untouched_ = false;
}

QByteArray AnyHost::atController(const QByteArray &frame) const {
    if (settings_.remoteNode < 0) {
        return frame;
    }
    const dravo::ElementType *type = dravo::findElementType(wordOf(frame, 5));
    if (!type) {
        broken("a remote frame is of no type");
    }
    expect(byteOf(frame, 3) == settings_.remoteNode, "a remote frame is not the node's");
    const bool isWrite = byteOf(frame, 2) != 0;
    const bool coils = type->elementClass == dravo::BitClass;
    const bool doubled =
        type->elementClass == dravo::DoubleWordClass || (isWrite && type->elementClass == dravo::WordPairClass);
    const int count = wordOf(frame, 11) * (doubled ? 2 : 1);
    return frame.mid(4, 1) + char(isWrite ? (coils ? 15 : 16) : (coils ? 1 : 3)) + frame.mid(9, 2) + char(count >> 8) +
           char(count);
}

void AnyHost::looksRight(const QByteArray &frame) const {
    const bool remote = settings_.remoteNode >= 0;
    expect(frame.size() >= (remote ? 22 : 8), "a frame is too short");
    expect(remote || withCrc(frame.left(frame.size() - 2)) == frame, "a frame has a wrong CRC");
    const QByteArray request = atController(frame);
    const int station = byteOf(request, 0);
    const int function = byteOf(request, 1);
    const bool single = function == 5 || function == 6;
    const int count = single ? 1 : wordOf(request, 4);
    const int most = function == 1 ? 2000 : function == 3 ? 125 : function == 15 ? 1968 : 123;
    expect(station <= 247, "a frame is for a station that there is not");
    expect(single || function == 1 || function == 3 || function == 15 || function == 16,
           "a frame has a function that the driver does not use");
    expect(count >= 1 && count <= most, "a frame is for more than Modbus allows");
    expect(remote || wordOf(request, 2) + count <= 65536, "a frame reaches beyond the last address");
    expect(station != 0 || function > 4, "everybody is asked for a value");
}

int AnyHost::takeEvents() {
    tookEvents_ = takesEvents_;
    if (!takesEvents_) {
        eventsMissed_ = true;
        return 0;
    }
    int taken = 0;
    int droppable = 0;
    for (dravo::LineEvent event; line_.takeEvent(&event); ++taken) {
        droppable += event.kind == dravo::LineEvent::Exchange || event.kind == dravo::LineEvent::PassDone ? 1 : 0;
        take(event);
    }
    expect(droppable <= kMostDroppableEvents, "events that nobody takes have no bound");
    for (const int station : kStations) {
        expect(line_.isDown(station) == (down_.count(station) != 0), "a station is down, and no event said so");
    }
    return taken;
}

void AnyHost::take(const dravo::LineEvent &event) {
    switch (event.kind) {
        case dravo::LineEvent::Exchange:
            return takeExchange(event);
        case dravo::LineEvent::Operation:
            expect(pending_.erase(event.operation) == 1, "an operation has an outcome that was not asked for");
            expect(!event.done || event.failure == dravo::LineEvent::None, "an operation is done and failed");
            return;
        case dravo::LineEvent::StationDown:
            return expect(down_.insert(event.station).second, "a station goes down twice");
        case dravo::LineEvent::StationUp:
            return expect(down_.erase(event.station) == 1, "a station comes up that was not down");
        case dravo::LineEvent::PassDone:
            return expect(event.passUs >= 0, "a pass takes less than no time");
        case dravo::LineEvent::ReadsChanged:
            return expect(!event.text.isEmpty(), "reads change without a word");
    }
}

void AnyHost::takeExchange(const dravo::LineEvent &event) {
    const bool answered = event.failure == dravo::LineEvent::None || event.failure == dravo::LineEvent::Refused;
    expect(eventsMissed_ || event.request == sent_, "an exchange is not of the last sending");
    expect(eventsMissed_ || !judged_, "a sending is judged twice");
    expect(!answered || event.station == 0 || !event.reply.isEmpty(), "an exchange is good without a reply");
    expect(event.reply.isEmpty() || received_.contains(event.reply), "a reply is believed that did not arrive");
    expect(event.reply.isEmpty() || withCrc(event.reply.left(event.reply.size() - 2)) == event.reply,
           "a reply with a wrong CRC is believed");
    expect((event.failure == dravo::LineEvent::Refused) == (event.exceptionCode != 0) || event.exceptionCode == 0,
           "an exception without a refusal");
    judged_ = true;
}

void AnyHost::look() {
    for (const dravo::Variable &one : watched_) {
        const dravo::ValueState state = line_.stateOf(one, nowUs_);
        expect(state.valuesRead.size() == one.count, "a value is not said to be read or not");
        const bool allRead = !state.valuesRead.contains(false);
        expect(allRead == (state.ageUs >= 0) && state.ageUs >= -1, "the age of a value and whether it was read differ");
        expect(state.condition != dravo::Fresh || (allRead && state.code == 0), "a value is fresh and was not read");
        expect(state.condition != dravo::Failing || state.code != 0, "a value fails without a code");
        const int size = one.kind == dravo::BitValue ? 1 : one.kind == dravo::WordValue ? 2 : 4;
        expect(dravo::Line::values(one).size() == one.count * size, "values have another size than they say");
    }
    const dravo::LineCounts &counts = line_.statistics().line().counts;
    expect(counts.answered + counts.retries <= 2 * counts.sendings && counts.busyUs >= 0, "counts contradict");
    expect(line_.plannedPassUs() >= 0, "a pass is planned in less than no time");
}
