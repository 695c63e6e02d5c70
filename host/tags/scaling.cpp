#include "host/tags/scaling.h"

#include <QtCore/QRegularExpression>
#include <limits>

#include "host/tags/number_text.h"

namespace {

// 2^32 raw values times a scale of 9 digits, plus an offset of 18, is less than 2^63.
constexpr int kScaleDigits = 9;
constexpr int kOffsetDigits = 18;
constexpr int kMostDecimals = 15;

struct Decimal {
    QString digits;  // with the sign, without the point
    int decimals = 0;
};

std::optional<Decimal> decimalNumber(const QString &text) {
    static const QRegularExpression kDecimal(QStringLiteral("\\A(-?[0-9]+)(?:\\.([0-9]+))?\\z"));
    const QRegularExpressionMatch match = kDecimal.match(text);
    return match.hasMatch() ? std::optional<Decimal>({match.captured(1) + match.captured(2), match.capturedLength(2)})
                            : std::nullopt;
}

bool isZero(const Decimal &number) {
    return !number.digits.contains(QRegularExpression(QStringLiteral("[1-9]")));
}

/// As a whole number of 10^-decimals; number has no more of them. Empty: more than 64 bits.
std::optional<qint64> inUnits(const Decimal &number, int decimals) {
    return wholeNumber(number.digits + QString(decimals - number.decimals, QLatin1Char('0')));
}

struct Floor {
    std::optional<qint64> units;  // at or below the number; empty: more than 64 bits
    bool exact = true;
};

/// The same of a number that may have more decimals.
Floor floorInUnits(const Decimal &number, int decimals) {
    const int surplus = number.decimals - decimals;
    if (surplus <= 0) {
        return {inUnits(number, decimals), true};
    }
    Floor floor{wholeNumber(number.digits.chopped(surplus)), true};
    floor.exact = number.digits.rightRef(surplus).count(QLatin1Char('0')) == surplus;
    if (!floor.exact && floor.units && number.digits.startsWith(QLatin1Char('-'))) {
        const bool isLast = *floor.units == std::numeric_limits<qint64>::min();
        floor.units = isLast ? std::nullopt : std::optional<qint64>(*floor.units - 1);
    }
    return floor;
}

bool fits(std::optional<qint64> number, int digits) {
    return number && QString::number(*number).remove(QLatin1Char('-')).size() <= digits;
}

QString decimalText(qint64 number, int decimals) {
    QString digits = QString::number(number).remove(QLatin1Char('-'));
    digits = digits.rightJustified(decimals + 1, QLatin1Char('0'));
    if (decimals > 0) {
        digits.insert(digits.size() - decimals, QLatin1Char('.'));
    }
    return number < 0 ? QLatin1Char('-') + digits : digits;
}

/// A scale or an offset by itself. Empty: good.
QString faultOf(const std::optional<Decimal> &number) {
    if (!number) {
        return QStringLiteral("is no decimal number such as 0.1 or -40");
    }
    return number->decimals > kMostDecimals ? QStringLiteral("has more than %1 decimals").arg(kMostDecimals)
                                            : QString();
}

qint64 unitsOf(const Scaling &scaling, qint64 raw) {
    return raw * scaling.scale + scaling.offset;
}

/// The raw value at or below what lies at or, where it is not exact, just above units.
qint64 rawBelow(const Scaling &scaling, const Floor &floor) {
    const qint64 distance = *floor.units - scaling.offset;
    const qint64 dividend = scaling.scale > 0 ? distance : floor.exact ? -distance : -distance - 1;
    const qint64 divisor = qAbs(scaling.scale);
    return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

}  // namespace

QString decimalFault(const QString &text) {
    return faultOf(decimalNumber(text));
}

ScalingRead readScaling(const QString &scale, const QString &offset) {
    const std::optional<Decimal> factor = scale.isEmpty() ? Decimal{QStringLiteral("1"), 0} : decimalNumber(scale);
    const std::optional<Decimal> summand = offset.isEmpty() ? Decimal{QStringLiteral("0"), 0} : decimalNumber(offset);
    ScalingRead read;
    read.scaleFault = factor && isZero(*factor) ? QStringLiteral("must not be 0") : faultOf(factor);
    read.offsetFault = faultOf(summand);
    if (!read.scaleFault.isEmpty() || !read.offsetFault.isEmpty()) {
        return read;
    }
    const int decimals = qMax(factor->decimals, summand->decimals);
    const std::optional<qint64> scaleUnits = inUnits(*factor, decimals);
    const std::optional<qint64> offsetUnits = inUnits(*summand, decimals);
    const QString tooLong = QStringLiteral("has more than %1 digits when it is written with %2 decimals");
    if (!fits(scaleUnits, kScaleDigits)) {
        (scale.isEmpty() ? read.offsetFault : read.scaleFault) =
            scale.isEmpty()
                ? QStringLiteral("has more than %1 decimals, too many for a scale of 1").arg(kScaleDigits - 1)
                : tooLong.arg(kScaleDigits).arg(decimals);
    }
    if (!fits(offsetUnits, kOffsetDigits)) {
        read.offsetFault = tooLong.arg(kOffsetDigits).arg(decimals);
    }
    read.scaling = {scaleUnits.value_or(1), offsetUnits.value_or(0), decimals};
    return read;
}

QString scaledText(const Scaling &scaling, qint64 raw) {
    return decimalText(unitsOf(scaling, raw), scaling.decimals);
}

RawRead rawOf(const Scaling &scaling, const QString &text, qint64 lowest, qint64 highest) {
    const qint64 least = scaling.scale > 0 ? lowest : highest;
    const qint64 most = scaling.scale > 0 ? highest : lowest;
    const std::optional<Decimal> number = decimalNumber(text);
    const Floor floor = number ? floorInUnits(*number, scaling.decimals) : Floor();
    const qint64 end = unitsOf(scaling, most);
    if (!floor.units || *floor.units < unitsOf(scaling, least) || *floor.units > end ||
        (*floor.units == end && !floor.exact)) {
        return {std::nullopt, scaledText(scaling, least) + QStringLiteral(" to ") + scaledText(scaling, most)};
    }
    const qint64 raw = rawBelow(scaling, floor);
    if (floor.exact && unitsOf(scaling, raw) == *floor.units) {
        return {raw, QString()};
    }
    const qint64 lower = scaling.scale > 0 ? raw : raw + 1;
    const qint64 upper = scaling.scale > 0 ? raw + 1 : raw;
    return {std::nullopt, scaledText(scaling, lower) + QStringLiteral(" or ") + scaledText(scaling, upper)};
}
