#include "host/commands/simulate_trace.h"

namespace {

constexpr std::size_t kRemoteStationByte = 4;

QByteArray bytesOf(const std::vector<std::uint8_t> &bytes) {
    return {reinterpret_cast<const char *>(bytes.data()), int(bytes.size())};
}

TracedFrame frameOf(const std::vector<std::uint8_t> &bytes, std::chrono::steady_clock::time_point at,
                    std::size_t stationByte) {
    TracedFrame frame;
    frame.us = std::chrono::duration_cast<std::chrono::microseconds>(at.time_since_epoch()).count();
    frame.bytes = bytesOf(bytes);
    frame.station = stationByte < bytes.size() ? bytes[stationByte] : -1;
    return frame;
}

QString requestVerdict(const SeenExchange &exchange) {
    return !exchange.isRequest      ? QStringLiteral("no request")
           : exchange.reply.empty() ? QStringLiteral("not answered")
                                    : QStringLiteral("answered");
}

}  // namespace

void writeExchange(const SeenExchange &exchange, TraceWriter *writer) {
    TracedFrame request = frameOf(exchange.request, exchange.requestEnd, exchange.remote ? kRemoteStationByte : 0);
    request.kind = exchange.isRequest ? TracedFrame::Request : TracedFrame::Damaged;
    request.remote = exchange.remote;
    request.verdict = requestVerdict(exchange);
    writer->write(request);
    if (exchange.reply.empty()) {
        return;
    }
    TracedFrame reply = frameOf(exchange.reply, exchange.replyBegin, 0);
    reply.kind = TracedFrame::Reply;
    reply.sent = true;
    reply.remote = exchange.remote;
    reply.request = request.bytes;
    const double ms = double(reply.us - request.us) / 1000;
    reply.verdict = QStringLiteral("%1 after %2 ms")
                        .arg(exchange.late ? QStringLiteral("late") : QStringLiteral("answer"))
                        .arg(ms, 0, 'f', 1);
    writer->write(reply);
}
