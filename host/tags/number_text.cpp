#include "host/tags/number_text.h"

#include <charconv>
#include <string>

namespace {

template <typename Number>
std::optional<Number> numberIn(const std::string &digits, int base) {
    Number number = 0;
    const char *end = digits.data() + digits.size();
    const std::from_chars_result result = std::from_chars(digits.data(), end, number, base);
    if (result.ec != std::errc() || result.ptr != end) {
        return std::nullopt;
    }
    return number;
}

}  // namespace

std::optional<qint64> wholeNumber(const QString &text) {
    if (!text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        return numberIn<qint64>(text.toStdString(), 10);
    }
    const std::optional<quint32> hex = prefixedNumber(text);
    return hex ? std::optional<qint64>(*hex) : std::nullopt;
}

std::optional<quint32> prefixedNumber(const QString &text) {
    const bool hex = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
    if (!hex && !text.startsWith(QLatin1String("0b"), Qt::CaseInsensitive)) {
        return std::nullopt;
    }
    return numberIn<quint32>(text.mid(2).toStdString(), hex ? 16 : 2);  // unsigned: no "0x-1"
}
