// 32-bit floating-point numbers as text. Each of the 2^32 patterns has a text of its own. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_FLOAT_TEXT_H
#define DRAVO_HOST_TAGS_FLOAT_TEXT_H

#include <QtCore/QString>
#include <optional>

/// The shortest text that floatBits() turns into the same bits: "0.1", "-0", "1e-45", "inf", "-inf"; "nan" for the
/// usual quiet one, and "nan:0xffc00001", the whole pattern, for every other.
QString floatText(quint32 bits);

/// The nearest number to a decimal one, or one of the other texts, blanks around it aside. Empty: text is none, or too
/// large or too small.
std::optional<quint32> floatBits(const QString &text);

#endif  // DRAVO_HOST_TAGS_FLOAT_TEXT_H
