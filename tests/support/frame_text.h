// Frames as the tests write them: hexadecimal digits, blanks where they help the reader.
#ifndef DRAVO_TESTS_FRAME_TEXT_H
#define DRAVO_TESTS_FRAME_TEXT_H

#include <QtCore/QByteArray>
#include <ostream>

/// The bytes of a text such as "0103 0064".
QByteArray bytes(const char *hex);

/// The frame closed by its CRC, low byte first. Worked out here, so that the driver is not asked about itself.
QByteArray withCrc(const QByteArray &frame);
inline QByteArray withCrc(const char *hex) {
    return withCrc(bytes(hex));
}

/// Failures show bytes as digits.
void PrintTo(const QByteArray &value, std::ostream *out);

#endif  // DRAVO_TESTS_FRAME_TEXT_H
