#include "host/tags/value_text.h"

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

std::optional<qint64> bitOf(const QString &text) {
    if (text.compare(QLatin1String("on"), Qt::CaseInsensitive) == 0) {
        return 1;
    }
    if (text.compare(QLatin1String("off"), Qt::CaseInsensitive) == 0) {
        return 0;
    }
    return wholeNumber(text);
}

struct KindFacts {
    int bytes;
    qint64 lowest;
    qint64 highest;
    const char *allowed;
};

const KindFacts &factsOf(dravo::ValueKind kind) {
    static const KindFacts kFacts[] = {
        {1, 0, 1, "on, off, 1 or 0"},
        {2, -32768, 65535, "-32768 to 65535, or 0x0 to 0xffff"},
        {4, -2147483648LL, 4294967295LL, "-2147483648 to 4294967295, or 0x0 to 0xffffffff"},
    };
    return kFacts[int(kind)];
}

}  // namespace

std::optional<qint64> wholeNumber(const QString &text) {
    const std::string digits = text.toStdString();
    if (!text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        return numberIn<qint64>(digits, 10);
    }
    const std::optional<quint32> hex = numberIn<quint32>(digits.substr(2), 16);  // unsigned: no "0x-1"
    return hex ? std::optional<qint64>(*hex) : std::nullopt;
}

TypedValues valueBytes(dravo::ValueKind kind, const QStringList &texts) {
    const KindFacts &facts = factsOf(kind);
    TypedValues values;
    for (const QString &text : texts) {
        const std::optional<qint64> value = kind == dravo::BitValue ? bitOf(text) : wholeNumber(text);
        if (!value || *value < facts.lowest || *value > facts.highest) {
            values.faults.append(
                QStringLiteral("'%1' is no value here: give %2").arg(text, QLatin1String(facts.allowed)));
            continue;
        }
        for (int i = 0; i < facts.bytes; ++i) {
            values.bytes.append(char((quint64(*value) >> (8 * i)) & 0xff));
        }
    }
    return values;
}

quint32 valueAt(dravo::ValueKind kind, const QByteArray &bytes, int index) {
    const int size = factsOf(kind).bytes;
    quint32 value = 0;
    for (int i = 0; i < size; ++i) {
        const qint64 at = qint64(index) * size + i;
        if (at >= 0 && at < bytes.size()) {
            value |= quint32(uchar(bytes.at(int(at)))) << (8 * i);
        }
    }
    return value;
}

QStringList valueTexts(dravo::ValueKind kind, const QByteArray &bytes, int count) {
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        texts.append(QString::number(valueAt(kind, bytes, i)));
    }
    return texts;
}
