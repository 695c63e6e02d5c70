#include "host/tags/value_text.h"

#include "host/tags/float_text.h"
#include "host/tags/number_text.h"
#include "host/tags/quoted_text.h"

namespace {

struct KindFacts {
    int bytes;
    qint64 lowest;
    qint64 highest;
};

const KindFacts &factsOf(dravo::ValueKind kind) {
    static const KindFacts kFacts[] = {
        {1, 0, 1},
        {2, -32768, 65535},
        {4, -2147483648LL, 4294967295LL},
    };
    return kFacts[int(kind)];
}

/// One typed value: its bits, or what can be given instead.
struct Typed {
    std::optional<qint64> value;  // negative ones stand for their two's complement
    QString allowed;
};

Typed within(std::optional<qint64> value, qint64 lowest, qint64 highest, const QString &allowed) {
    return value && *value >= lowest && *value <= highest ? Typed{value, QString()} : Typed{std::nullopt, allowed};
}

Typed typedBit(const QString &text) {
    const bool on = text.compare(QLatin1String("on"), Qt::CaseInsensitive) == 0;
    const bool off = text.compare(QLatin1String("off"), Qt::CaseInsensitive) == 0;
    return within(on || off ? std::optional<qint64>(on) : wholeNumber(text), 0, 1, QStringLiteral("on, off, 1 or 0"));
}

Typed typedFloat(const QString &text) {
    const std::optional<quint32> bits = floatBits(text);
    return {bits ? std::optional<qint64>(*bits) : std::nullopt,
            QStringLiteral("a 32-bit float, inf, -inf, nan or nan:0xffc00001")};
}

Typed typedPattern(const QString &text, const KindFacts &facts) {
    const std::optional<quint32> pattern = prefixedNumber(text);
    return within(
        pattern ? std::optional<qint64>(*pattern) : std::nullopt, 0, facts.highest,
        QStringLiteral("0x0 to 0x%1, or up to %2 digits after 0b").arg(facts.highest, 0, 16).arg(8 * facts.bytes));
}

Typed typedNumber(const QString &text, const KindFacts &facts, qint64 highest) {
    const Typed pattern = typedPattern(text, facts);
    const QString allowed = QStringLiteral("%1 to %2, or 0x/0b of %3 bits");
    return pattern.value ? pattern
                         : within(wholeNumber(text), facts.lowest, highest,
                                  allowed.arg(facts.lowest).arg(highest).arg(8 * facts.bytes));
}

Typed typed(dravo::ValueKind kind, const ValueFormat &format, const QString &text) {
    const KindFacts &facts = factsOf(kind);
    const bool isSigned = format.notation == Notation::Signed;
    const qint64 highest = isSigned ? facts.highest / 2 : facts.highest;
    if (format.scaling) {
        const RawRead read = rawOf(*format.scaling, text, isSigned ? facts.lowest : 0, highest);
        return {read.raw, read.allowed};
    }
    switch (format.notation) {
        case Notation::Float:
            return typedFloat(text);
        case Notation::Hex:
        case Notation::Binary:
            return typedPattern(text, facts);
        case Notation::Decimal:
        case Notation::Signed:
            break;
    }
    return kind == dravo::BitValue ? typedBit(text) : typedNumber(text, facts, highest);
}

QString shown(dravo::ValueKind kind, const ValueFormat &format, quint32 bits) {
    const int bytes = factsOf(kind).bytes;
    switch (format.notation) {
        case Notation::Float:
            return floatText(bits);
        case Notation::Hex:
            return QStringLiteral("0x%1").arg(bits, 2 * bytes, 16, QLatin1Char('0'));
        case Notation::Binary:
            return QStringLiteral("0b%1").arg(bits, 8 * bytes, 2, QLatin1Char('0'));
        case Notation::Decimal:
        case Notation::Signed:
            break;
    }
    const qint64 highest = factsOf(kind).highest;
    const bool isNegative = format.notation == Notation::Signed && bits > highest / 2;
    const qint64 value = isNegative ? bits - (highest + 1) : qint64(bits);
    return format.scaling ? scaledText(*format.scaling, value) : QString::number(value);
}

}  // namespace

TypedValues valueBytes(dravo::ValueKind kind, const ValueFormat &format, const QStringList &texts) {
    TypedValues values;
    for (const QString &text : texts) {
        const Typed read = typed(kind, format, text);
        if (!read.value) {
            values.faults.append(QStringLiteral("%1 is no value here: give %2").arg(quoted(text), read.allowed));
            continue;
        }
        for (int i = 0; i < factsOf(kind).bytes; ++i) {
            values.bytes.append(char((quint64(*read.value) >> (8 * i)) & 0xff));
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

QStringList valueTexts(dravo::ValueKind kind, const ValueFormat &format, const QByteArray &bytes, int count) {
    QStringList texts;
    for (int i = 0; i < count; ++i) {
        texts.append(shown(kind, format, valueAt(kind, bytes, i)));
    }
    return texts;
}
