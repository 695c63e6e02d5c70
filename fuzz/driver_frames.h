// What every request looks like on the wire and which reply it takes, worked out byte by byte. Pure.
#ifndef DRAVO_FUZZ_DRIVER_FRAMES_H
#define DRAVO_FUZZ_DRIVER_FRAMES_H

#include "korvel_dravo_port.h"

namespace reference {

inline int byteAt(const QByteArray &bytes, qint64 index) {
    return index < bytes.size() ? static_cast<unsigned char>(bytes.at(int(index))) : 0;
}

/// Of the first length bytes (modulo 65,536, as the library's own), bit by bit.
int crcOf(const QByteArray &bytes, int length);
QByteArray withCrc(QByteArray bytes);
int sumOf(const QByteArray &bytes);

Protocol readRequest(const RW_VAR &var);
/// Of a type that is not a bit inside a word.
Protocol writeRequest(const RW_VAR &var);
Protocol remoteReadRequest(const RW_VAR &var);
Protocol remoteWriteRequest(const RW_VAR &var);

}  // namespace reference

#endif  // DRAVO_FUZZ_DRIVER_FRAMES_H
