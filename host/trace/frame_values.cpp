#include "host/trace/frame_values.h"

#include "korvel_dravo_elements.h"

namespace {

constexpr int kCrcBytes = 2;
constexpr int kReadHead = 3;   // station, function, byte count
constexpr int kWriteHead = 7;  // of functions 15 and 16: and byte count
constexpr int kShortestRequest = 8;
constexpr int kCoilOn = 0xFF00;

int functionOf(const QByteArray &frame) {
    return frame.size() > 1 ? uchar(frame.at(1)) : 0;
}

int wordAt(const QByteArray &frame, int at) {
    return uchar(frame.at(at)) << 8 | uchar(frame.at(at + 1));
}

bool isRead(int function) {
    return function >= 1 && function <= 4;
}

bool isCoils(int function) {
    return function == 1 || function == 2 || function == 5 || function == 15;
}

// A request or a write's reply: both have the addresses in the same place.
FrameAddresses addressesIn(const QByteArray &frame) {
    const int function = functionOf(frame);
    if (frame.size() < kShortestRequest) {
        return {};
    }
    const bool single = function == 5 || function == 6;
    const bool many = isRead(function) || function == 15 || function == 16;
    return single ? FrameAddresses{wordAt(frame, 2), 1}
           : many ? FrameAddresses{wordAt(frame, 2), wordAt(frame, 4)}
                  : FrameAddresses{};
}

FrameValues readValues(const TracedFrame &frame) {
    FrameValues values;
    values.data = frame.bytes.mid(kReadHead, frame.bytes.size() - kReadHead - kCrcBytes);
    const dravo::ElementType *type = dravo::findElementType(frame.elements.elemType);
    const bool holdsElements = frame.remote && frame.elements.count > 0 && type != nullptr;
    if (holdsElements ? type->elementClass == dravo::BitClass : isCoils(functionOf(frame.bytes))) {
        const int known = frame.remote ? frame.elements.count : addressesOf(frame).quantity;
        const int most = 8 * values.data.size();
        values.bits = known > 0 ? qMin(known, most) : most;
    }
    return values;
}

FrameValues singleValue(const QByteArray &frame) {
    if (functionOf(frame) == 5) {
        return {QByteArray(1, wordAt(frame, 4) == kCoilOn ? '\1' : '\0'), 1};
    }
    return {frame.mid(4, 2), 0};
}

}  // namespace

FrameAddresses addressesOf(const TracedFrame &frame) {
    const bool hasOwn = frame.kind != TracedFrame::Reply || !isRead(functionOf(frame.bytes));
    if (frame.remote) {
        return {};
    }
    const FrameAddresses own = hasOwn ? addressesIn(frame.bytes) : FrameAddresses{};
    return own.quantity > 0 ? own : addressesIn(frame.request);
}

FrameValues valuesOf(const TracedFrame &frame) {
    const int function = functionOf(frame.bytes);
    const int size = frame.bytes.size();
    const bool isReply = frame.kind == TracedFrame::Reply;
    if (frame.kind == TracedFrame::Damaged || (frame.remote && !(isReply && isRead(function)))) {
        return {};  // a remote frame carries values in a form of its own
    }
    if (isRead(function)) {
        return isReply && size > kReadHead + kCrcBytes ? readValues(frame) : FrameValues{};
    }
    if ((function == 5 || function == 6) && size >= kShortestRequest) {
        return singleValue(frame.bytes);
    }
    if (!isReply && (function == 15 || function == 16) && size > kWriteHead + kCrcBytes) {
        FrameValues values{frame.bytes.mid(kWriteHead, size - kWriteHead - kCrcBytes), 0};
        values.bits = function == 15 ? qMin(addressesIn(frame.bytes).quantity, 8 * values.data.size()) : 0;
        return values;
    }
    return {};
}
