#include "line/soak.h"

#include <algorithm>

#include "korvel_dravo_port.h"
#include "line/desk.h"

namespace {

const std::vector<int> kStations = {1, 2, 3};
constexpr int kMoving = 32;     // registers below count on by themselves
constexpr int kRegisters = 64;  // from there on they are written
constexpr int kBitWord = 40;    // its bits are written one by one, and the whole now and then
constexpr int kSelfLikeCoils = 0x0310;
constexpr int kMostPending = 20;
constexpr int kMostToEnd = 2000;  // exchanges until the last of them is over
constexpr int kStormEvery = 3;
constexpr Us kLongestProbeUs = 1000000;
constexpr double kStormLoss = 0.2;

// In two runs of three it does not happen at all.
double drawn(Draws &random, double most) {
    return random() % 3 == 0 ? std::uniform_real_distribution<double>(0, most)(random) : 0;
}

WireTimes drawnTimes(Draws &random) {
    WireTimes times;
    times.timeoutUs = 40000 + Us(random() % 160000);
    times.lifetimeUs = times.timeoutUs * Us(6 + random() % 5) / 2 + 40000;  // the longest answer takes 38 ms
    return times;
}

}  // namespace

WireFaults Soak::drawnFaults(Draws &random) {
    WireFaults faults;
    faults.lastMoment = 0.3;
    if (random() % kStormEvery != 0) {  // answers and refusals come late or never, and nothing else is wrong
        faults.late = 0.7;
        faults.exception = random() % 2 == 0 ? 0.2 : 0;
        faults.lost = kStormLoss;
        faults.overtaking = true;
        return faults;
    }
    faults.late = std::uniform_real_distribution<double>(0, 0.6)(random);
    faults.lost = random() % 2 == 0 ? drawn(random, 0.4) : 0.1;
    faults.cut = drawn(random, 0.1);
    faults.altered = drawn(random, 0.1);
    faults.stray = drawn(random, 0.1);
    faults.foreign = drawn(random, 0.1);
    faults.exception = drawn(random, 0.1);
    faults.remote = random() % 8 == 0;
    faults.foreign = faults.remote ? 0 : faults.foreign;  // answers to remote frames name no function
    faults.doubled = random() % 8 == 0 ? 0.3 : 0;
    faults.overtaking = random() % 2 == 0;
    faults.echo = random() % 3 == 0;
    faults.deadStation = random() % 3 == 0 ? 3 : 0;
    faults.refusedFrom = random() % 2 == 0 ? kMoving + int(random() % 30) : 1 << 20;
    return faults;
}

dravo::LineSettings Soak::drawnSettings(Draws &random, const WireTimes &times, const WireFaults &faults) {
    dravo::LineSettings settings;
    settings.baud = times.baud;
    settings.timeoutUs = times.timeoutUs;
    settings.lifetimeUs = times.lifetimeUs;
    settings.turnaroundUs = times.turnaroundUs;
    settings.retries = int(random() % 5);
    settings.echo = random() % 3 != 0 ? dravo::EchoAuto : faults.echo ? dravo::EchoOn : dravo::EchoOff;
    settings.downAfter = int(random() % 5);
    settings.frameLimit = 2 + int(random() % (random() % 2 == 0 ? 6 : 30));
    settings.merge = random() % 2 == 0 ? dravo::MergeByTime : dravo::MergeByDriver;
    settings.passPeriodUs = random() % 4 == 0 ? 1000000 : 0;
    settings.refusedRetryUs = 5000000;
    settings.firstProbeUs = 200000;
    settings.longestProbeUs = kLongestProbeUs;
    settings.remoteNode = faults.remote ? 3 : -1;
    settings.answersMayDouble = faults.doubled > 0;
    if (faults.lost == kStormLoss) {  // many requests whose answers look alike
        settings.frameLimit = 2;
        settings.retries = random() % 3 == 0 ? 0 : 1;
        settings.downAfter = 0;
    }
    return settings;
}

Soak::Soak(Draws draws, unsigned seed)
    : seed_(seed),
      random_(std::move(draws)),
      times_(drawnTimes(random_)),
      faults_(drawnFaults(random_)),
      wire_(faults_, times_, kStations, random_.branch()),
      settings_(drawnSettings(random_, times_, faults_)),
      line_(settings_, 0),
      byteByByte_(random_() % 3 == 0),
      asksEvery_(random_() % 3 == 0                                 ? 1000
                 : random_() % 2 == 0 && faults_.lost != kStormLoss ? 4
                                                                    : 30) {
    wire_.alarm = [this](const std::string &what) { fail(what); };
    wire_.written = [this](int writer, bool coil, int address, quint16 before, quint16 after) {
        if (!coil && address != kBitWord && after < before) {  // each write takes the next values
            fail("a write was carried out after one that was asked for later");
        }
        if (bitWrites_.count(writer) != 0 && qPopulationCount(quint16(before ^ after)) > 1) {
            fail("the write of a bit changed its neighbours");
        }
    };
    for (const int station : kStations) {
        for (int address = 0; address < kRegisters; ++address) {
            const bool moving = address < kMoving;
            wire_.holdingRegister(station, address) = Cell(moving ? station * kMoving + address : -1, 0);
        }
        for (int i = 0; i < 200; ++i) {
            wire_.coil(station, i) = Cell(-1, 0);
            wire_.coil(station, kSelfLikeCoils + i) = Cell(-1, quint16((i + station) % 3 == 0));
        }
    }
    watchSomething();
    // What an earlier master asked just before may still be answered.
    const char *const earlier[] = {"010300300002", "0203003c0001", "010600300001", "03030000000a"};
    for (const char *frame : earlier) {
        if (faults_.remote) {
            break;
        }
        QByteArray request = QByteArray::fromHex(frame);
        const int crc = CalCRC(reinterpret_cast<uchar *>(request.data()), quint16(request.size()));
        wire_.send(request + char(crc & 0xFF) + char(crc >> 8), -20000, 0);
    }
}

// Several of one length, so that an answer to one could pass for another's; with gaps, and some that are refused.
void Soak::watchSomething() {
    QVector<dravo::Variable> variables;
    const bool isStorm = faults_.lost == kStormLoss;
    for (int i = 0; isStorm && i < 8; ++i) {  // two bytes in every answer
        variables.append(i % 2 == 0 ? variable(1, 7, QByteArray::number(4 * i), 1)
                                    : variable(1, 1, QByteArray::number(kSelfLikeCoils + 20 * i, 8), 16));
    }
    for (const int station : isStorm ? std::vector<int>() : kStations) {
        for (int i = 0; i < 2 + below(4); ++i) {
            const bool coils = below(2) == 0;
            const int address = coils ? kSelfLikeCoils + below(8) : below(kRegisters - 8);
            const int type = coils ? 1 : below(4) == 0 ? 12 : 7;
            variables.append(variable(station, type, QByteArray::number(address, coils ? 8 : 10),
                                      coils ? 9 + below(24) : 1 + below(3)));
        }
    }
    if (below(4) == 0) {  // another screen, which shows less
        variables.resize(below(variables.size()));
    }
    watched_ = variables;
    line_.watch(variables, nowUs_);
}

void Soak::asked(int operation, const Asked &what) {
    if (operation == 0) {
        fail("an operation was refused");
    } else if (!pending_.emplace(operation, what).second) {
        fail("an operation has the number of another");
    }
}

void Soak::askSomething() {
    if (int(pending_.size()) >= kMostPending) {
        return;
    }
    const int station = kStations[size_t(below(int(kStations.size())))];
    const int kind = below(20);
    kind == 0 ? askBroadcast() : kind < 4 ? askOnceRead(station) : askWrite(station);
}

void Soak::askWrite(int station) {
    const int kind = faults_.remote ? 1 + below(3) : below(4);
    const int count = kind == 0 ? 1 : 1 + below(3);
    Asked what = {true, station, kind == 1, 0, QByteArray(), -1, nowUs_};
    if (kind < 2) {
        for (int i = 0; i < count; ++i) {
            what.values.append(char(below(2)));
        }
    } else {
        for (int i = 0; i < count; ++i) {
            ++nextValue_;
            what.values.append(char(nextValue_)).append(char(nextValue_ >> 8));
        }
    }
    if (kind == 0) {  // a bit inside a word
        what.address = kBitWord;
        what.bit = below(16);
        const QByteArray address = QByteArray::number(kBitWord) + '.' + QByteArray::number(what.bit);
        return asked(line_.write(variable(station, 15, address, 1), what.values), what);
    }
    what.address = kind == 1 ? below(8) : below(6) == 0 ? kBitWord : kMoving + below(kRegisters - kMoving - 3);
    const int type = kind == 1 ? 1 : 7;
    const QByteArray address = QByteArray::number(what.address, kind == 1 ? 8 : 10);
    asked(line_.write(variable(station, type, address, count), what.values), what);
}

void Soak::askBroadcast() {
    const int address = kMoving + below(8);
    ++nextValue_;
    const QByteArray values = QByteArray(1, char(nextValue_)) + char(nextValue_ >> 8);
    dravo::Variable everywhere = variable(1, 7, QByteArray::number(address), 1);
    everywhere.station = 0;
    asked(line_.write(everywhere, values), {true, 0, false, address, values, -1, nowUs_});
}

void Soak::askOnceRead(int station) {
    const dravo::Variable wanted = variable(station, 7, QByteArray::number(below(kRegisters - 3)), 1 + below(3));
    asked(line_.readOnce(wanted), {false, station, false, 0, QByteArray(), -1, nowUs_});
}

std::string Soak::run(int exchanges) {
    while (exchanges_ < exchanges && !random_.isSpent() && failure_.empty() && !hadAccident_) {
        turn(true);
    }
    while (!pending_.empty() && failure_.empty() && !hadAccident_) {
        turn(false);
        if (exchanges_ > exchanges + kMostToEnd) {
            fail("operation " + std::to_string(pending_.begin()->first) + " has no outcome");
        }
    }
    if (!random_.isSpent() || !down_.empty()) {
        lookWhetherHealthy();
    }
    return failure_;
}

// Whoever answers is soon asked again, and heard.
void Soak::lookWhetherHealthy() {
    WireFaults health;
    health.echo = faults_.echo;
    health.remote = faults_.remote;
    wire_.setFaults(health);
    const Us untilUs = nowUs_ + 4 * kLongestProbeUs + 10 * times_.lifetimeUs;
    while (nowUs_ < untilUs && failure_.empty() && !hadAccident_) {
        turn(false);
    }
    for (const dravo::Variable &one : watched_) {
        if (line_.isDown(one.station) && !hadAccident_) {
            fail("station " + std::to_string(one.station) + " stays down though it answers");
        }
    }
    wire_.setFaults(faults_);
}

void Soak::turn(bool asks) {
    wire_.advance(nowUs_);
    line_.received(wire_.take(nowUs_), nowUs_);
    if (asks && below(asksEvery_) == 0) {
        askSomething();
    }
    if (asks && below(300) == 0) {
        watchSomething();
    }
    if (asks && below(4000) == 0) {
        line_.restart(nowUs_);
        look();
        if (!pending_.empty()) {
            fail("an operation outlives a restart");
        }
        ++requests_;
    }
    const dravo::Step step = line_.next(wire_.chance(0.01) ? nowUs_ - 5000 : nowUs_);
    look();
    if (!hadAccident_ && below(8) == 0) {
        lookAtShown();
    }
    if (step.kind == dravo::Step::Wait) {
        wait(step.untilUs);
        return;
    }
    const Us askedUs = nowUs_;
    if (wire_.chance(0.002)) {
        nowUs_ += wire_.between(0, times_.lifetimeUs);  // something held the process up
        wire_.advance(nowUs_);
    }
    const bool again = !sendings_.empty() && sendings_.back().request == requests_;
    if (again && sendings_.back().frame != step.bytes) {
        fail("another frame goes out before the request before it is over");
    }
    sendings_.push_back({step.bytes, askedUs, nowUs_ + wire_.charactersUs(step.bytes.size()), requests_});
    while (sendings_.front().us < nowUs_ - 20 * times_.lifetimeUs) {
        sendings_.pop_front();
    }
    wire_.send(step.bytes, nowUs_, requests_);
    line_.sent(nowUs_);
    ++exchanges_;
}

// Looks at the line byte by byte, or now and then, or after a long pause.
void Soak::wait(Us untilUs) {
    Us us = std::min(untilUs, nowUs_ + 50000);
    if (byteByByte_) {
        us = std::min(us, wire_.nextArrivalUs());
    } else if (wire_.nextArrivalUs() < us) {
        us = std::min(us, wire_.nextArrivalUs() + wire_.between(0, 16000));
    }
    if (wire_.chance(0.001)) {
        us += wire_.between(0, 3 * times_.lifetimeUs);
    }
    nowUs_ = std::max(us, nowUs_ + 1);
}

void Soak::look() {
    for (dravo::LineEvent event; line_.takeEvent(&event);) {
        lookAt(event);
    }
}

void Soak::lookAtShown() {
    if (watched_.isEmpty()) {
        return;
    }
    const dravo::Variable &one = watched_.at(below(watched_.size()));
    const dravo::ValueState state = line_.stateOf(one, nowUs_);
    if (one.elements.elemType != 7 || state.condition != dravo::Fresh) {
        return;
    }
    const QByteArray values = dravo::Line::values(one);
    const Us since = nowUs_ - state.ageUs - 5 * times_.lifetimeUs - 300000;
    for (int i = 0; i < one.elements.count; ++i) {
        const int place = one.elemType == 12 ? i ^ 1 : i;  // the high word comes first on the line
        const int value = byteOf(values, 2 * place) | byteOf(values, 2 * place + 1) << 8;
        const bool isSecondHalf = one.elemType == 12 && i % 2 != 0 && one.elementAddress + i < kMoving;
        if (isSecondHalf && ((value ^ byteOf(values, 2 * i)) & 63) != 0) {  // both count on together
            fail("a 32-bit value is shown whose halves were not read together");
        }
        const int address = one.elementAddress + i;
        const Us from = std::max(since, writtenUs_[{one.station, address}]);
        if (!wire_.holdingRegister(one.station, address).heldBetween(quint16(value), from, nowUs_)) {
            fail("station " + std::to_string(one.station) + " is shown with " + std::to_string(value) + " at " +
                 std::to_string(address));
        }
    }
}

void Soak::lookAt(const dravo::LineEvent &event) {
    hadAccident_ = hadAccident_ || (!event.reply.isEmpty() && !wire_.isGenuine(event.reply));
    if (hadAccident_) {
        return;
    }
    switch (event.kind) {
        case dravo::LineEvent::Exchange:
            if (event.failure == dravo::LineEvent::Refused &&
                !wire_.wasRefused(wire_.atController(event.request), event.exceptionCode, windowStart(event))) {
                fail("an exception was believed that no controller sent for this request");
            }
            if (event.failure == dravo::LineEvent::Refused && event.exceptionCode <= 3 && !event.over) {
                fail("a final refusal is asked again");
            }
            if (event.failure == dravo::LineEvent::None && !event.write) {
                lookAtRead(event);
            }
            requests_ += event.over || event.failure == dravo::LineEvent::None ? 1 : 0;
            if (!event.over && event.failure == dravo::LineEvent::None) {
                bitWrites_.insert(requests_);
                bitWrites_.erase(bitWrites_.begin(), bitWrites_.lower_bound(requests_ - 1000));
            }
            break;
        case dravo::LineEvent::Operation:
            lookAtOperation(event);
            break;
        case dravo::LineEvent::StationDown:
        case dravo::LineEvent::StationUp:
            if (down_.count(event.station) == (event.kind == dravo::LineEvent::StationDown ? 1U : 0U)) {
                fail("a station went down or came up twice");
            }
            event.kind == dravo::LineEvent::StationDown ? void(down_.insert(event.station))
                                                        : void(down_.erase(event.station));
            break;
        case dravo::LineEvent::PassDone:
        case dravo::LineEvent::ReadsChanged:
            break;
    }
}

// When the value may have been taken at the earliest: a cyclic read is served by an answer to an earlier sending of the
// same frame, unless something was written to the station since.
Us Soak::windowStart(const dravo::LineEvent &event) const {
    Us start = nowUs_;
    for (auto sending = sendings_.rbegin(); sending != sendings_.rend(); ++sending) {
        const QByteArray request = wire_.atController(sending->frame);
        const int station = byteOf(request, 0);
        const int function = byteOf(request, 1);
        const bool own = sending->request == requests_;
        if (!own && (!event.cyclic || ((station == 0 || station == event.station) && function > 4) ||
                     sending->endUs + times_.lifetimeUs < start)) {
            break;
        }
        start = sending->frame == event.request ? sending->us : start;
    }
    return start;
}

void Soak::lookAtRead(const dravo::LineEvent &event) {
    const Us from = windowStart(event);
    const QByteArray request = wire_.atController(event.request);
    const bool coils = byteOf(request, 1) == 1;
    const int first = wordOf(request, 2);
    for (int i = 0; i < wordOf(request, 4); ++i) {
        Cell &cell = coils ? wire_.coil(event.station, first + i) : wire_.holdingRegister(event.station, first + i);
        const int value = coils ? byteOf(event.reply, 3 + i / 8) >> i % 8 & 1 : wordOf(event.reply, 3 + 2 * i);
        if (!cell.heldBetween(quint16(value), from, nowUs_)) {
            fail("station " + std::to_string(event.station) + " did not hold " + std::to_string(value) + " at " +
                 std::to_string(first + i) + " between " + std::to_string(from) + " and " + std::to_string(nowUs_));
            return;
        }
    }
}

void Soak::lookAtOperation(const dravo::LineEvent &event) {
    const auto found = pending_.find(event.operation);
    if (found == pending_.end()) {
        return fail("operation " + std::to_string(event.operation) + " has a second outcome");
    }
    if (event.done && found->second.write && found->second.station != 0 && !wasCarriedOut(found->second)) {
        fail("write " + std::to_string(event.operation) + " is done and was not carried out");
    }
    const Asked &asked = found->second;
    for (const int station : kStations) {
        const bool reached = asked.station == 0 || asked.station == station;
        for (int i = 0; event.done && reached && !asked.coils && i < asked.values.size(); ++i) {
            writtenUs_[{station, asked.address + i / 2}] = nowUs_;
        }
    }
    operationsDone_ += event.done ? 1 : 0;
    pending_.erase(found);
}

bool Soak::wasCarriedOut(const Asked &asked) {
    const int size = asked.coils || asked.bit >= 0 ? 1 : 2;
    for (int i = 0; i < asked.values.size() / size; ++i) {
        const int value =
            size == 1 ? byteOf(asked.values, i) : byteOf(asked.values, 2 * i) | byteOf(asked.values, 2 * i + 1) << 8;
        Cell &cell = asked.coils ? wire_.coil(asked.station, asked.address + i)
                                 : wire_.holdingRegister(asked.station, asked.address + i);
        const auto right = [&](quint16 written) {
            return asked.bit >= 0 ? (written >> asked.bit & 1) == value : written == value;
        };
        if (!cell.writtenBetween(asked.us, nowUs_, right)) {
            return false;
        }
    }
    return true;
}

void Soak::fail(const std::string &what) {
    failure_ = failure_.empty() ? what : failure_;
}

std::string Soak::report() const {
    std::string text =
        "seed " + std::to_string(seed_) + " after " + std::to_string(exchanges_) + " exchanges: " + failure_ + "\n";
    for (const std::string &line : wire_.log()) {
        text += line + "\n";
    }
    return text;
}
