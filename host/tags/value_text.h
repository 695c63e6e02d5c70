// Values as text: what the user types, and what is shown. Bytes are those of GetRegisterData and SetRegisterData: 1 per
// bit, 2 per register, 4 per 32-bit value, least significant first. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_VALUE_TEXT_H
#define DRAVO_HOST_TAGS_VALUE_TEXT_H

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <optional>

#include "korvel_dravo_line.h"

/// A whole number as it is typed: decimal, also negative, or 0x hexadecimal up to 0xffffffff. Empty: text is none.
std::optional<qint64> wholeNumber(const QString &text);

struct TypedValues {
    QByteArray bytes;
    QStringList faults;  // one for each text that is no value of the kind; empty: bytes holds them all
};

/// Reads values as they are typed: on, off, 0 or 1 for a bit; else whole numbers, negative ones in two's complement.
TypedValues valueBytes(dravo::ValueKind kind, const QStringList &texts);

/// Value number index, unsigned; 0 past the end of bytes.
quint32 valueAt(dravo::ValueKind kind, const QByteArray &bytes, int index);

/// The first count values of bytes, unsigned and in decimal.
QStringList valueTexts(dravo::ValueKind kind, const QByteArray &bytes, int count);

#endif  // DRAVO_HOST_TAGS_VALUE_TEXT_H
