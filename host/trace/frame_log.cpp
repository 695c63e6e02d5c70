#include "host/trace/frame_log.h"

#include <algorithm>

#include "host/trace/verdict_text.h"

namespace {
constexpr int kMostArrived = 16384;  // bytes; a line that babbles sends that in a second or so
constexpr int kMostBehind = 512;     // frames
constexpr int kMostRequests = 16;    // whose copies may still come
constexpr int kRemoteStationByte = 4;
constexpr qint64 kQuietUs = 1000000;  // the engine gives bytes up sooner
}  // namespace

void FrameLog::received(const QByteArray &bytes, qint64 us) {
    if (!bytes.isEmpty()) {
        arrived_.append(bytes);
        portions_.append({arrived_.size(), us});
    }
}

void FrameLog::counted(const dravo::LineStatistics &statistics, qint64 us) {
    drops_.update(statistics);
    if (arrived_.size() > kMostArrived || (!portions_.isEmpty() && us - portions_.last().us > kQuietUs)) {
        dropBefore(arrived_.size());
    }
    if (behind_.size() > kMostBehind) {
        giveUpOnVerdict(QStringLiteral("not judged yet"));
    }
}

// The engine sends when all that has arrived is sorted.
void FrameLog::sent(const QByteArray &frame, qint64 us) {
    dropBefore(arrived_.size());
    giveUpOnVerdict(QStringLiteral("not judged"));
    drops_.forget();
    lastRequests_.append(frame);
    if (lastRequests_.size() > kMostRequests) {
        lastRequests_.removeFirst();
    }
    lastSentUs_ = us;
    TracedFrame request;
    request.sent = true;
    request.remote = remote_;
    request.us = us;
    request.bytes = frame;
    const int place = remote_ ? kRemoteStationByte : 0;
    request.station = place < frame.size() ? uchar(frame.at(place)) : -1;
    lastStation_ = request.station;
    request_ = request;
}

void FrameLog::happened(const dravo::LineEvent &event) {
    if (event.kind == dravo::LineEvent::Exchange) {
        judge(event);
    }
}

void FrameLog::judge(const dravo::LineEvent &exchange) {
    if (request_ && request_->bytes == exchange.request) {
        request_->elements = {exchange.station, exchange.elemType, exchange.address, exchange.count};
        request_->verdict = requestVerdict(exchange);
        request_->result = resultText(exchange);
        request_->good = exchange.failure == dravo::LineEvent::None;
        release();
    }
    const int place = placeOf(exchange.reply);
    if (place >= 0) {
        dropBefore(place);
        tellAnswer(exchange);
    }
}

// Of a reply that is like its request the copies come first.
int FrameLog::placeOf(const QByteArray &reply) const {
    if (reply.isEmpty()) {
        return -1;
    }
    int place = arrived_.indexOf(reply);
    const qint64 copies = lastRequests_.contains(reply) ? drops_.echoes(uchar(reply.at(0))) : 0;
    for (qint64 i = 0; i < copies; ++i) {
        const int next = arrived_.indexOf(reply, place + reply.size());
        place = next >= 0 ? next : place;
    }
    return place;
}

void FrameLog::tellAnswer(const dravo::LineEvent &exchange) {
    TracedFrame answer = arrivedFrame(TracedFrame::Reply, 0, exchange.reply.size());
    answer.elements = {exchange.station, exchange.elemType, exchange.address, exchange.count};
    answer.request = exchange.request;
    answer.verdict = replyVerdict(exchange);
    answer.result = resultText(exchange);
    answer.good = exchange.failure == dravo::LineEvent::None;
    tellInTurn(answer);
    forgetBefore(exchange.reply.size());
}

void FrameLog::dropBefore(int end) {
    for (const Piece &piece : cutFrames(arrived_.left(end), lastRequests_)) {
        tellInTurn(dropped(piece));
    }
    forgetBefore(end);
}

TracedFrame FrameLog::dropped(const Piece &piece) {
    const bool isCopy = piece.kind == Piece::Copy;
    const bool isWhole = isCopy || piece.kind == Piece::Whole;
    TracedFrame frame = arrivedFrame(isCopy    ? TracedFrame::Copy
                                     : isWhole ? TracedFrame::Reply
                                               : TracedFrame::Damaged,
                                     piece.start, piece.size);
    const qint64 sinceUs = lastSentUs_ < 0 ? -1 : frame.us - lastSentUs_;
    frame.verdict =
        isWhole ? dropVerdict(drops_.take(frame.station, isCopy), sinceUs) : damageVerdict(piece.kind, sinceUs);
    return frame;
}

TracedFrame FrameLog::arrivedFrame(TracedFrame::Kind kind, int start, int size) const {
    TracedFrame frame;
    frame.kind = kind;
    frame.remote = remote_;
    frame.bytes = arrived_.mid(start, size);
    const int stationAt = kind == TracedFrame::Copy && remote_ ? kRemoteStationByte : 0;
    frame.station = kind == TracedFrame::Damaged ? lastStation_ : uchar(frame.bytes.at(stationAt));
    const auto endsBefore = [](const Portion &portion, int end) { return portion.end < end; };
    const auto last = std::lower_bound(portions_.begin(), portions_.end(), start + size, endsBefore);
    frame.us = last->us;  // all that has arrived is in some portion
    return frame;
}

void FrameLog::forgetBefore(int end) {
    arrived_.remove(0, end);
    const auto isOver = [end](const Portion &portion) { return portion.end <= end; };
    portions_.erase(portions_.begin(), std::find_if_not(portions_.begin(), portions_.end(), isOver));
    for (Portion &portion : portions_) {
        portion.end -= end;
    }
}

void FrameLog::ended() {
    dropBefore(arrived_.size());
    giveUpOnVerdict(QStringLiteral("not judged, the line was closed"));
    drops_.forget();
}

void FrameLog::giveUpOnVerdict(const QString &verdict) {
    if (request_) {
        request_->verdict = verdict;
        release();
    }
}

void FrameLog::release() {
    tell_(*request_);
    request_.reset();
    for (const TracedFrame &frame : behind_) {
        tell_(frame);
    }
    behind_.clear();
}

void FrameLog::tellInTurn(const TracedFrame &frame) {
    if (request_) {
        behind_.append(frame);
    } else {
        tell_(frame);
    }
}
