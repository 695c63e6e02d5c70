// Whole numbers as people write them. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_NUMBER_TEXT_H
#define DRAVO_HOST_TAGS_NUMBER_TEXT_H

#include <QtCore/QString>
#include <optional>

/// Decimal, also negative, or 0x hexadecimal up to 0xffffffff. Empty: text is none.
std::optional<qint64> wholeNumber(const QString &text);

/// 0x hexadecimal or 0b binary, up to 32 bits. Empty: text is none.
std::optional<quint32> prefixedNumber(const QString &text);

#endif  // DRAVO_HOST_TAGS_NUMBER_TEXT_H
