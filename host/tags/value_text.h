// Values as text: what the user types, and what is shown. Bytes are those of GetRegisterData and SetRegisterData: 1 per
// bit, 2 per register, 4 per 32-bit value, least significant first. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_VALUE_TEXT_H
#define DRAVO_HOST_TAGS_VALUE_TEXT_H

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include "host/tags/value_format.h"

struct TypedValues {
    QByteArray bytes;
    QStringList faults;  // one for each text that is no value of the kind; empty: bytes holds them all
};

/// Reads values as they are typed, all that valueTexts() shows among them. Bits: on, off, 1 or 0. dec: whole numbers,
/// negative ones in two's complement, 0x and 0b patterns; signed: the same, half as far up. hex and binary: patterns
/// only, for 1010 could be meant as either. float: decimal numbers and the texts of floatText(). Scaled values: see
/// rawOf().
/// @param format  usable for the kind.
TypedValues valueBytes(dravo::ValueKind kind, const ValueFormat &format, const QStringList &texts);

/// Value number index, unsigned; 0 past the end of bytes.
quint32 valueAt(dravo::ValueKind kind, const QByteArray &bytes, int index);

/// The first count values of bytes, without the unit. @param format  usable for the kind.
QStringList valueTexts(dravo::ValueKind kind, const ValueFormat &format, const QByteArray &bytes, int count);

#endif  // DRAVO_HOST_TAGS_VALUE_TEXT_H
