#include "line/wire.h"

#include <algorithm>

#include "support/frame_text.h"

namespace {

bool isWrite(int function) {
    return function == 5 || function == 6 || function == 15 || function == 16;
}

bool isOfCoils(int function) {
    return function == 1 || function == 5 || function == 15;
}

int countOf(const QByteArray &request) {
    const int function = byteOf(request, 1);
    return function == 5 || function == 6 ? 1 : wordOf(request, 4);
}

int replyLength(const QByteArray &request) {
    const int function = byteOf(request, 1);
    return isWrite(function) ? 8 : function == 1 ? 5 + (countOf(request) + 7) / 8 : 5 + 2 * countOf(request);
}

}  // namespace

quint16 Cell::at(Us us) const {
    if (name_ >= 0) {
        return quint16(name_ << 6 | (us / kStepUs & 63));
    }
    quint16 value = changes_.front().second;
    for (const auto &[changedUs, changed] : changes_) {
        value = changedUs <= us ? changed : value;
    }
    return value;
}

void Cell::write(quint16 value, Us us) {
    name_ = -1;
    changes_.emplace_back(us, value);
    if (changes_.size() > 64) {
        changes_.pop_front();
    }
}

bool Cell::heldBetween(quint16 value, Us from, Us to) const {
    if (name_ >= 0) {
        const Us first = from / kStepUs;
        const Us steps = to / kStepUs - first;
        return value >> 6 == (name_ & 0x3FF) && (steps >= 63 || ((value - first) & 63) <= steps);
    }
    return at(from) == value || writtenBetween(from, to, [value](quint16 written) { return written == value; });
}

bool Cell::writtenBetween(Us from, Us to, const std::function<bool(quint16)> &right) const {
    return std::any_of(changes_.begin(), changes_.end(), [&](const auto &change) {
        return change.first >= from && change.first <= to && right(change.second);
    });
}

Wire::Wire(const WireFaults &faults, const WireTimes &times, const std::vector<int> &stations, Draws draws)
    : faults_(faults), times_(times), stations_(stations), draws_(std::move(draws)) {}

QByteArray Wire::atController(const QByteArray &frame) const {
    if (!faults_.remote) {
        return frame;
    }
    const bool write = byteOf(frame, 2) != 0;
    const bool coils = wordOf(frame, 5) == 1;
    QByteArray request = frame.mid(4, 1) + char(write ? (coils ? 15 : 16) : (coils ? 1 : 3)) + frame.mid(9, 4);
    const QByteArray data = frame.mid(21, frame.size() - 22);
    request += write ? QByteArray(1, char(data.size())) : QByteArray();
    for (int i = 0; i < data.size(); ++i) {
        request += data.at(coils ? i : i ^ 1);  // registers come low byte first
    }
    return request;
}

void Wire::send(const QByteArray &sent, Us us, int writer) {
    note("out", sent, us);
    const QByteArray frame = atController(sent);
    const Us endUs = us + charactersUs(sent.size());
    const int function = byteOf(frame, 1);
    if (countOf(frame) > (isOfCoils(function) ? isWrite(function) ? 1968 : 2000 : isWrite(function) ? 123 : 125)) {
        alarm("a request is longer than Modbus allows");
    }
    if (isWrite(function)) {
        auto &cells = isOfCoils(function) ? coils_ : registers_;
        for (const int station : stations_) {
            for (int i = 0; (byteOf(frame, 0) == 0 || byteOf(frame, 0) == station) && i < countOf(frame); ++i) {
                cells[{station, wordOf(frame, 2) + i}].latestWriter = writer;
            }
        }
    }
    if (faults_.echo && !chance(faults_.lost)) {
        QByteArray echo = sent;
        noteGenuine(echo);
        if (chance(faults_.altered)) {
            flip(echo);
        }
        const Us latestUs = times_.lifetimeUs - charactersUs(30);
        const Us echoUs = us + (chance(0.02) ? between(0, latestUs) : between(0, 2000));
        at(echoUs, [=] { putOnLine(echo, echoUs); });
    }
    if (chance(faults_.lost) || chance(faults_.altered)) {
        return;
    }
    for (const int station : stations_) {
        if ((byteOf(frame, 0) == station || byteOf(frame, 0) == 0) && !isDead(station, endUs)) {
            schedule(station, frame, endUs, writer);
        }
    }
}

void Wire::schedule(int station, const QByteArray &frame, Us endUs, int writer) {
    const Us lastUs = endUs + times_.lifetimeUs;
    Us replyUs = endUs + between(times_.replyFirstUs, times_.replyLastUs);
    if (byteOf(frame, 0) == 0) {
        const Request broadcast = {endUs + between(0, times_.turnaroundUs), 0, 0, station, frame, writer};
        at(broadcast.us, [=] { carryOut(broadcast); });
        return;
    }
    if (chance(faults_.late)) {
        const Us latestUs = times_.lifetimeUs - charactersUs(replyLength(frame));
        replyUs = endUs + between(chance(faults_.lastMoment) ? latestUs - 5000 : times_.timeoutUs, latestUs);
    }
    Us us = replyUs - between(0, replyUs - endUs);
    if (!faults_.overtaking) {
        Us &last = lastReplyUs_[station];
        us = std::max(us, last);
        replyUs = std::max(replyUs, us);
        last = replyUs;
    }
    const Request request = {us, replyUs, lastUs, station, frame, writer};
    at(us, [=] { carryOut(request); });
}

void Wire::advance(Us us) {
    while (!events_.empty() && events_.begin()->first <= us) {
        const std::function<void()> happens = std::move(events_.begin()->second);
        events_.erase(events_.begin());
        happens();
    }
}

void Wire::carryOut(const Request &request) {
    const QByteArray reply = replyTo(request);
    noteGenuine(reply);
    if (chance(faults_.foreign)) {
        const char *const frames[] = {"4d030400010002", "010402aaaa", "02020101", "010305aabbccddee", "4d060001ffff"};
        const QByteArray frame = withCrc(frames[between(0, 4)]);
        noteGenuine(frame);
        const Us us = std::max(request.us, request.replyUs - between(0, 3000));
        at(us, [=] { putOnLine(frame, us); });
    }
    if (byteOf(request.frame, 0) == 0 || chance(faults_.lost)) {
        return;
    }
    const QByteArray bytes = distorted(reply);
    at(request.replyUs, [=] { putOnLine(bytes, request.replyUs, request.lastUs); });
    if (chance(faults_.doubled)) {
        const Us us = between(request.replyUs, request.lastUs);
        at(us, [=] { putOnLine(bytes, us, request.lastUs); });
    }
}

QByteArray Wire::replyTo(const Request &request) {
    const QByteArray &frame = request.frame;
    const int function = byteOf(frame, 1);
    const bool exists = isOfCoils(function) || wordOf(frame, 2) + countOf(frame) <= faults_.refusedFrom ||
                        wordOf(frame, 2) >= faults_.refusedTo;
    const int refusal = !exists ? 2 : chance(faults_.exception) ? int(between(4, 6)) : 0;
    if (refusal != 0) {
        refusals_.push_back({frame, refusal, request.us});
        if (refusals_.size() > 256) {
            refusals_.pop_front();
        }
        return withCrc(QByteArray(1, char(request.station)) + char(function | 0x80) + char(refusal));
    }
    if (isWrite(function)) {
        writeCells(request);
        return withCrc(frame.left(6));
    }
    return withCrc(answer(request));
}

QByteArray Wire::answer(const Request &request) {
    const QByteArray &frame = request.frame;
    const int first = wordOf(frame, 2);
    const int count = countOf(frame);
    const bool coils = byteOf(frame, 1) == 1;
    QByteArray data(coils ? (count + 7) / 8 : 2 * count, '\0');
    for (int i = 0; i < count; ++i) {
        if (coils) {
            data[i / 8] = char(data.at(i / 8) | (coil(request.station, first + i).at(request.us) & 1) << i % 8);
        } else {
            const quint16 value = holdingRegister(request.station, first + i).at(request.us);
            data[2 * i] = char(value >> 8);
            data[2 * i + 1] = char(value);
        }
    }
    return frame.left(2) + char(data.size()) + data;
}

void Wire::writeCells(const Request &request) {
    const QByteArray &frame = request.frame;
    const int function = byteOf(frame, 1);
    const int first = wordOf(frame, 2);
    for (int i = 0; i < countOf(frame); ++i) {
        Cell &cell =
            isOfCoils(function) ? coil(request.station, first + i) : holdingRegister(request.station, first + i);
        const int value = function == 5    ? byteOf(frame, 4) != 0
                          : function == 6  ? wordOf(frame, 4)
                          : function == 15 ? byteOf(frame, 7 + i / 8) >> i % 8 & 1
                                           : wordOf(frame, 7 + 2 * i);
        const quint16 before = cell.at(request.us);
        cell.write(quint16(value), request.us);
        written(request.writer, isOfCoils(function), first + i, before, quint16(value));
        if (cell.latestWriter != request.writer) {
            alarm("a write was carried out after a later one to the same address was sent");
        }
    }
}

// What cannot have arrived by lastUs does not go out at all.
void Wire::putOnLine(const QByteArray &bytes, Us us, Us lastUs) {
    Us at = std::max(us, busyUntilUs_);
    if (at + charactersUs(bytes.size()) > lastUs) {
        return;
    }
    note("in ", bytes, at);
    for (const char byte : bytes) {
        at += charactersUs(1);
        bytes_.emplace_back(at, byte);
    }
    busyUntilUs_ = at;
}

QByteArray Wire::distorted(QByteArray reply) {
    if (chance(faults_.altered)) {
        flip(reply);
    }
    if (chance(faults_.cut)) {
        const int kept = int(between(1, reply.size() - 1));
        reply = chance(0.5) ? reply.left(kept) : reply.right(kept);
    }
    if (chance(faults_.stray)) {
        const int at = chance(0.5) ? 0 : int(between(0, reply.size()));
        for (Us i = between(1, 6); i > 0; --i) {
            reply.insert(at, char(chance(0.3) ? between(1, 6) : between(0, 255)));
        }
    }
    return reply;
}

void Wire::flip(QByteArray &bytes) {
    const int at = int(between(0, bytes.size() - 1));
    bytes[at] = char(bytes.at(at) ^ 1 << between(0, 7));
}

// Dead for some ten seconds out of forty.
bool Wire::isDead(int station, Us us) const {
    return station == faults_.deadStation && us / 10000000 % 4 == 1;
}

QByteArray Wire::take(Us us) {
    QByteArray taken;
    while (!bytes_.empty() && bytes_.front().first <= us) {
        taken += bytes_.front().second;
        bytes_.pop_front();
    }
    return taken;
}

Us Wire::nextArrivalUs() const {
    const Us bytes = bytes_.empty() ? INT64_MAX : bytes_.front().first;
    return std::min(bytes, events_.empty() ? INT64_MAX : events_.begin()->first);
}

bool Wire::wasRefused(const QByteArray &request, int exceptionCode, Us since) const {
    return std::any_of(refusals_.begin(), refusals_.end(), [&](const Refusal &refusal) {
        return refusal.frame == request && refusal.code == exceptionCode && refusal.us >= since;
    });
}

void Wire::noteGenuine(const QByteArray &frame) {
    genuine_.push_back(frame);
    if (genuine_.size() > 512) {
        genuine_.pop_front();
    }
}

bool Wire::isGenuine(const QByteArray &frame) const {
    return std::find(genuine_.begin(), genuine_.end(), frame) != genuine_.end();
}

void Wire::note(const std::string &what, const QByteArray &bytes, Us us) {
    log_.push_back(std::to_string(us) + " " + what + " " + bytes.toHex(' ').toStdString());
    if (log_.size() > 40) {
        log_.pop_front();
    }
}
