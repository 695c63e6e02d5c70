// A read request of Modbus RTU as its bytes say it. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_READ_FRAME_H
#define DRAVO_HOST_PLAN_READ_FRAME_H

#include <QtCore/QByteArray>

struct ReadFrame {
    int function;  // 1: coils, 3: holding registers
    int start;     // Modbus address
    int quantity;  // coils or registers
};

constexpr int kReadCoils = 1;

/// frame: 8 bytes.
inline ReadFrame readFrame(const QByteArray &frame) {
    const auto word = [&frame](int at) { return uchar(frame.at(at)) << 8 | uchar(frame.at(at + 1)); };
    return {uchar(frame.at(1)), word(2), word(4)};
}

/// Data bytes in the reply.
inline int dataBytes(const ReadFrame &read) {
    return read.function == kReadCoils ? (read.quantity + 7) / 8 : 2 * read.quantity;
}

/// Whether Modbus allows no such read: 2000 coils or 125 registers are the most.
inline bool isTooLong(const ReadFrame &read) {
    return read.quantity > (read.function == kReadCoils ? 2000 : 125);
}

#endif  // DRAVO_HOST_PLAN_READ_FRAME_H
