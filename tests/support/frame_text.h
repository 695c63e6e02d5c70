// Frames as the tests write them: hexadecimal digits, blanks where they help the reader.
#ifndef DRAVO_TESTS_FRAME_TEXT_H
#define DRAVO_TESTS_FRAME_TEXT_H

#include <QtCore/QByteArray>
#include <ostream>
#include <string>
#include <vector>

/// The bytes of a text such as "0103 0064".
QByteArray bytes(const char *hex);

/// The frame closed by its CRC, low byte first. Worked out here, so that the driver is not asked about itself.
QByteArray withCrc(const QByteArray &frame);
inline QByteArray withCrc(const char *hex) {
    return withCrc(bytes(hex));
}

/// One case of a table: fields that stand between ">", blanks around them dropped.
struct Row {
    std::string text;
    std::vector<std::string> fields;
    const char *operator[](size_t field) const { return fields.at(field).c_str(); }
    int number(size_t field) const { return std::stoi(fields.at(field)); }
};

/// The cases of a table written as text, separated by ";" or line ends.
std::vector<Row> rows(const char *table);

/// Failures show bytes as digits.
void PrintTo(const QByteArray &value, std::ostream *out);

#endif  // DRAVO_TESTS_FRAME_TEXT_H
