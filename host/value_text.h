// Values as text: what the user types, and what is shown. Bytes are those of GetRegisterData and SetRegisterData: 1 per
// bit, 2 per register, 4 per 32-bit value, least significant first. Pure; any thread.
#ifndef DRAVO_HOST_VALUE_TEXT_H
#define DRAVO_HOST_VALUE_TEXT_H

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include "host/variable.h"

/// Bytes of one value: 1, 2 or 4.
int bytesPerValue(ValueKind kind);

/// Reads the values of texts: on, off, 0 or 1 for a bit; else decimal, also negative (two's complement), or 0x
/// hexadecimal.
/// @param faults  one line for each text that is no value of kind; empty when all are.
QByteArray valueBytes(ValueKind kind, const QStringList &texts, QStringList *faults);

/// Value number index, unsigned; 0 past the end of bytes.
quint32 valueAt(ValueKind kind, const QByteArray &bytes, int index);

#endif  // DRAVO_HOST_VALUE_TEXT_H
