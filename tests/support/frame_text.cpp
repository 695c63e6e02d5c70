#include "support/frame_text.h"

namespace {

unsigned reversed(unsigned value, int bits) {
    unsigned result = 0;
    for (int bit = 0; bit < bits; ++bit) {
        result |= ((value >> bit) & 1U) << (bits - 1 - bit);
    }
    return result;
}

std::vector<std::string> split(const std::string &text, const char *separators) {
    std::vector<std::string> parts;
    for (size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
        end = text.find_first_of(separators, start);
        const std::string part = text.substr(start, end - start);
        const size_t first = part.find_first_not_of(' ');
        parts.push_back(first == std::string::npos ? "" : part.substr(first, part.find_last_not_of(' ') + 1 - first));
    }
    return parts;
}

}  // namespace

QByteArray bytes(const char *hex) {
    return QByteArray::fromHex(hex);
}

QByteArray withCrc(const QByteArray &frame) {
    unsigned crc = 0xFFFF;
    for (int i = 0; i < frame.size(); ++i) {
        crc ^= reversed(static_cast<unsigned char>(frame.at(i)), 8) << 8;
        for (int bit = 0; bit < 8; ++bit) {
            crc = ((crc << 1) ^ ((crc & 0x8000U) != 0 ? 0x8005U : 0U)) & 0xFFFFU;
        }
    }
    crc = reversed(crc, 16);
    return frame + static_cast<char>(crc & 0xFFU) + static_cast<char>(crc >> 8);
}

std::vector<Row> rows(const char *table) {
    std::vector<Row> result;
    for (const std::string &text : split(table, ";\n")) {
        if (!text.empty()) {
            result.push_back(Row{text, split(text, ">")});
        }
    }
    return result;
}

void PrintTo(const QByteArray &value, std::ostream *out) {
    *out << '"' << value.toHex().constData() << '"';
}
