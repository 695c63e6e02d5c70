// How the values of a variable are shown and typed. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_VALUE_FORMAT_H
#define DRAVO_HOST_TAGS_VALUE_FORMAT_H

#include <QtCore/QList>
#include <QtCore/QStringList>
#include <optional>

#include "host/tags/scaling.h"
#include "korvel_dravo_line.h"

enum class Notation {
    Decimal,  // unsigned, bits as 0 and 1: goes with every value
    Signed,   // two's complement; this and the others not for bits
    Hex,
    Binary,
    Float  // 32-bit values only
};

struct ValueFormat {
    Notation notation = Notation::Decimal;
    std::optional<Scaling> scaling;  // Decimal and Signed only, not of bits
    QString unit;                    // shown behind the values; it is not typed
};

/// In the order of Notation: dec, signed, hex, binary, float.
const QStringList &notationNames();

/// A format as people write it; what is empty is the default.
struct FormatTexts {
    QString format, scale, offset, unit;
};
/// Reads a format for values of a kind; without one, what depends on it is not looked at.
/// @return every fault, its field named as in FormatTexts, with the value. Empty: format is usable.
QList<dravo::VariableFault> readFormat(const FormatTexts &texts, std::optional<dravo::ValueKind> kind,
                                       ValueFormat *format);

#endif  // DRAVO_HOST_TAGS_VALUE_FORMAT_H
