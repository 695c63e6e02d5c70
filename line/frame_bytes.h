// Bytes of Modbus frames. Pure; any thread.
#ifndef DRAVO_LINE_FRAME_BYTES_H
#define DRAVO_LINE_FRAME_BYTES_H

#include <QtCore/QByteArray>

namespace dravo {

const int kCrcBytes = 2;
const int kShortestFrame = 4;    // station, function, CRC
const int kLongestFrame = 4096;  // anything longer is noise; Modbus itself ends at 256

/// A byte as 0 to 255; -1 past the end.
inline int byteOf(const QByteArray &bytes, int index) {
    return index >= 0 && index < bytes.size() ? uchar(bytes.at(index)) : -1;
}

/// Two bytes from index on, high byte first; the frame reaches there.
inline int wordOf(const QByteArray &bytes, int index) {
    return uchar(bytes.at(index)) << 8 | uchar(bytes.at(index + 1));
}

/// Whether length bytes from offset on, which are there, end with the CRC of those before.
bool crcFits(const QByteArray &bytes, int offset, int length);

/// Length of the reply frame that starts at offset, as its own bytes tell; 0: too few bytes to tell; -1: no reply of
/// a function that controllers know starts like this.
int lengthByHeader(const QByteArray &bytes, int offset);

}  // namespace dravo

#endif  // DRAVO_LINE_FRAME_BYTES_H
