#include "host/tags/float_text.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <string>

#include "host/tags/number_text.h"

namespace {

constexpr quint32 kQuietNan = 0x7fc00000;
const QString kNan = QStringLiteral("nan");
const QString kPattern = QStringLiteral("nan:");

float numberOf(quint32 bits) {
    float number = 0;
    static_assert(sizeof number == sizeof bits, "a 32-bit value");
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

quint32 bitsOf(float number) {
    quint32 bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

std::optional<quint32> nanBits(const QString &text) {
    if (text == kNan) {
        return kQuietNan;
    }
    const std::optional<quint32> bits =
        text.startsWith(kPattern) ? prefixedNumber(text.mid(kPattern.size())) : std::nullopt;
    return bits && std::isnan(numberOf(*bits)) ? bits : std::nullopt;
}

}  // namespace

QString floatText(quint32 bits) {
    const float number = numberOf(bits);
    if (std::isnan(number)) {
        return bits == kQuietNan ? kNan : kPattern + QStringLiteral("0x%1").arg(bits, 8, 16, QLatin1Char('0'));
    }
    char text[32];
    const std::to_chars_result result = std::to_chars(text, text + sizeof text, number);
    return QString::fromLatin1(text, int(result.ptr - text));
}

std::optional<quint32> floatBits(const QString &typed) {
    const QString text = typed.trimmed();
    if (text.startsWith(kNan)) {
        return nanBits(text);
    }
    const std::string characters = text.toStdString();
    const char *end = characters.data() + characters.size();
    float number = 0;
    const std::from_chars_result result = std::from_chars(characters.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || std::isnan(number)) {
        return std::nullopt;
    }
    return bitsOf(number);
}
