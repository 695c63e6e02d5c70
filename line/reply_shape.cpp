#include "line/reply_shape.h"

#include "line/frame_bytes.h"

namespace dravo {

namespace {

const int kReadOverhead = 5;    // station, function, byte count, CRC
const int kEchoedBytes = 4;     // of a write: start address, and value or quantity
const int kShortestAnswer = 6;  // shorter ones the driver refuses
const int kRemoteStationByte = 4;
const Span kNoSpan = {Span::Nothing, 0, 0};

bool isRead(int function) {
    return function == 1 || function == 3;
}

bool isWriteFunction(int function) {
    return function == 5 || function == 6 || function == 15 || function == 16;
}

// Start and quantity stand at the same place in every request but the single writes, which have no quantity.
Span spanOf(const QByteArray &frame, int function) {
    const Span::Space space = function == 1 || function == 5 || function == 15 ? Span::Coils : Span::Registers;
    const Span span = {space, wordOf(frame, 2), function == 5 || function == 6 ? 1 : wordOf(frame, 4)};
    return span;
}

// Read as a reply, a request for coils from 0x0300 to 0x03FF says "3 data bytes", and so it is of a reply's length.
bool looksLikeItsAnswer(const QByteArray &frame, int function, int dataBytes) {
    return function == 5 || function == 6 || (function == 1 && byteOf(frame, 2) == 3 && dataBytes == 3);
}

RequestShape remoteShape(const Protocol &request) {
    const bool write = request.var.accessFlag != 0;
    const Span everything = {Span::Everything, 0, 0};
    RequestShape shape = {request.frame,
                          byteOf(request.frame, kRemoteStationByte),
                          kAnyFunction,
                          request.replyLength,
                          QByteArray(),
                          write,
                          write ? everything : kNoSpan,
                          false};
    return shape;
}

}  // namespace

RequestShape shapeOf(const Protocol &request, bool remote) {
    if (remote) {
        return remoteShape(request);
    }
    const QByteArray &frame = request.frame;
    const int function = byteOf(frame, 1);
    RequestShape shape = {frame, byteOf(frame, 0), function, 0, QByteArray(), false, kNoSpan, false};
    if (isRead(function)) {
        // A reply that the driver would refuse as too short answers nothing; only an exception can.
        shape.replyLength = request.dataLength > 0 ? request.dataLength + kReadOverhead : 0;
        shape.head = QByteArray(1, char(request.dataLength & 0xFF));
        if (request.var.param1 == kMergeRead) {
            shape.span = spanOf(frame, function);
        }
    } else if (isWriteFunction(function) && frame.size() >= 8) {
        shape.replyLength = request.replyLength;
        shape.head = frame.mid(2, kEchoedBytes);
        shape.isWrite = true;
        shape.span = spanOf(frame, function);
    }
    shape.looksAnswered = looksLikeItsAnswer(frame, function, request.dataLength);
    return shape;
}

bool isException(const QByteArray &reply) {
    return reply.size() == kExceptionLength && (byteOf(reply, 1) & kExceptionBit);
}

bool RequestShape::fits(const QByteArray &reply) const {
    if (station == 0 || replyLength < kShortestAnswer || reply.size() != replyLength || byteOf(reply, 0) != station) {
        return false;
    }
    return function == kAnyFunction || (byteOf(reply, 1) == function && reply.mid(2, head.size()) == head);
}

bool RequestShape::fitsException(const QByteArray &reply) const {
    if (station == 0 || reply.size() != kExceptionLength || byteOf(reply, 0) != station) {
        return false;
    }
    const int code = byteOf(reply, 1);
    return function == kAnyFunction ? (code & kExceptionBit) != 0 : code == ((function | kExceptionBit) & 0xFF);
}

bool answersLookAlike(const RequestShape &a, const RequestShape &b) {
    return a.station == b.station && a.function == b.function && a.replyLength == b.replyLength && a.head == b.head;
}

bool overlap(const RequestShape &a, const RequestShape &b) {
    if (a.span.space == Span::Nothing || b.span.space == Span::Nothing ||
        (a.station != b.station && a.station != 0 && b.station != 0)) {
        return false;
    }
    if (a.span.space == Span::Everything || b.span.space == Span::Everything) {
        return true;
    }
    return a.span.space == b.span.space && a.span.first < b.span.first + b.span.count &&
           b.span.first < a.span.first + a.span.count;
}

}  // namespace dravo
