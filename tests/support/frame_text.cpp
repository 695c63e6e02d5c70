#include "support/frame_text.h"

#include <QtCore/QList>

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

std::vector<Row> rows(const char *table) {
    std::vector<Row> result;
    for (const QByteArray &line : QByteArray(table).replace('\n', ';').split(';')) {
        if (line.trimmed().isEmpty()) {
            continue;
        }
        Row row = {line.trimmed().toStdString(), {}};
        for (const QByteArray &field : line.split('>')) {
            row.fields.push_back(field.trimmed().toStdString());
        }
        result.push_back(row);
    }
    return result;
}

void PrintTo(const QByteArray &value, std::ostream *out) {
    *out << '"' << value.toHex().constData() << '"';
}
