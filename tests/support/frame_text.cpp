#include "support/frame_text.h"

QByteArray bytes(const char *hex) {
    return QByteArray::fromHex(hex);
}

QByteArray withCrc(const QByteArray &frame) {
    unsigned crc = 0xFFFF;
    for (const char byte : frame) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1) ^ ((crc & 1U) != 0 ? 0xA001U : 0U);
        }
    }
    return frame + static_cast<char>(crc & 0xFFU) + static_cast<char>(crc >> 8);
}

void PrintTo(const QByteArray &value, std::ostream *out) {
    *out << '"' << value.toHex().constData() << '"';
}
