#include "host/simulation/line_frame.h"

namespace simulation {

namespace {

constexpr std::size_t kCrcBytes = 2;
constexpr std::size_t kByteCountOfWrite = 6;  // where functions 15 and 16 say how many data bytes follow

std::uint16_t crcOf(const Bytes &bytes, std::size_t size) {
    unsigned crc = 0xFFFF;
    for (std::size_t i = 0; i < size; ++i) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1U) != 0 ? (crc >> 1U) ^ 0xA001U : crc >> 1U;
        }
    }
    return static_cast<std::uint16_t>(crc);
}

}  // namespace

void appendCrc(Bytes &frame) {
    const std::uint16_t crc = crcOf(frame, frame.size());
    frame.push_back(static_cast<std::uint8_t>(crc & 0xFFU));
    frame.push_back(static_cast<std::uint8_t>(crc >> 8U));
}

bool crcFits(const Bytes &frame) {
    if (frame.size() < kCrcBytes + 2) {
        return false;
    }
    const std::size_t end = frame.size() - kCrcBytes;
    return crcOf(frame, end) == (frame[end] | frame[end + 1] << 8);
}

std::size_t requestLength(const Bytes &bytes) {
    if (bytes.size() < 2) {
        return 0;
    }
    switch (bytes[1]) {
        case 1:
        case 2:
        case 3:
        case 4:
        case 5:
        case 6:
            return 8;
        case 15:
        case 16:
            return bytes.size() > kByteCountOfWrite ? kByteCountOfWrite + 1 + bytes[kByteCountOfWrite] + kCrcBytes : 0;
        default:
            return 0;
    }
}

std::size_t replyLength(const Bytes &bytes) {
    if (bytes.size() < 3) {
        return 0;
    }
    if ((bytes[1] & kExceptionBit) != 0) {
        return 3 + kCrcBytes;
    }
    return bytes[1] <= 4 ? 3U + bytes[2] + kCrcBytes : 8U;
}

AddressSpan addressesOf(const Bytes &request) {
    const auto wordAt = [&request](std::size_t i) { return request[i] << 8 | request[i + 1]; };
    const bool single = request[1] == 5 || request[1] == 6;
    return {wordAt(2), single ? 1 : wordAt(4)};
}

Bytes exceptionReply(std::uint8_t station, std::uint8_t function, std::uint8_t code) {
    Bytes reply{station, static_cast<std::uint8_t>(function | kExceptionBit), code};
    appendCrc(reply);
    return reply;
}

}  // namespace simulation
