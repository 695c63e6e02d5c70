#include "host/tags/value_format.h"

#include "host/tags/quoted_text.h"

namespace {

constexpr int kLongestUnit = 16;

class FormatReader {
public:
    FormatReader(const FormatTexts &texts, std::optional<dravo::ValueKind> kind) : texts_(texts), kind_(kind) {}

    QList<dravo::VariableFault> read(ValueFormat *format) {
        readNotation(&format->notation);
        if (!texts_.scale.isEmpty() || !texts_.offset.isEmpty()) {
            readScale(format);
        }
        format->unit = texts_.unit;
        if (texts_.unit.size() > kLongestUnit) {
            fault("unit", texts_.unit, QStringLiteral("has more than %1 characters").arg(kLongestUnit));
        }
        return faults_;
    }

private:
    void readNotation(Notation *notation) {
        const int place = texts_.format.isEmpty() ? 0 : notationNames().indexOf(texts_.format);
        if (place < 0) {
            fault("format", texts_.format,
                  QStringLiteral("must be one of ") + notationNames().join(QLatin1String(", ")));
            return;
        }
        *notation = Notation(place);
        if (*notation != Notation::Decimal && kind_ == dravo::BitValue) {
            fault("format", texts_.format, QStringLiteral("does not go with bits, which are shown as 0 and 1: dec"));
        } else if (*notation == Notation::Float && kind_ == dravo::WordValue) {
            fault("format", texts_.format,
                  QStringLiteral("does not go with registers of 16 bits: dec, signed, hex or binary"));
        }
    }

    void readScale(ValueFormat *format) {
        const ScalingRead read = readScaling(texts_.scale, texts_.offset);
        format->scaling = read.scaling;
        const bool numbers = format->notation == Notation::Decimal || format->notation == Notation::Signed;
        const QString misplaced = kind_ == dravo::BitValue ? QStringLiteral("does not go with bits")
                                  : numbers                ? QString()
                                                           : QStringLiteral("goes with format dec or signed only");
        fault("scale", texts_.scale, read.scaleFault.isEmpty() ? misplaced : read.scaleFault);
        fault("offset", texts_.offset, read.offsetFault.isEmpty() ? misplaced : read.offsetFault);
    }

    /// Nothing where there is no value or no reason.
    void fault(const char *field, const QString &value, const QString &reason) {
        if (!value.isEmpty() && !reason.isEmpty()) {
            faults_.append({QLatin1String(field), valueAndReason(value, reason)});
        }
    }

    const FormatTexts &texts_;
    std::optional<dravo::ValueKind> kind_;
    QList<dravo::VariableFault> faults_;
};

}  // namespace

const QStringList &notationNames() {
    static const QStringList names{QStringLiteral("dec"), QStringLiteral("signed"), QStringLiteral("hex"),
                                   QStringLiteral("binary"), QStringLiteral("float")};
    return names;
}

QList<dravo::VariableFault> readFormat(const FormatTexts &texts, std::optional<dravo::ValueKind> kind,
                                       ValueFormat *format) {
    return FormatReader(texts, kind).read(format);
}
