// Formats, and values as text both ways.
#include <QtCore/QVector>

#include "fuzz/tool_texts.h"
#include "host/tags/float_text.h"
#include "host/tags/value_text.h"

namespace {

int bytesOf(dravo::ValueKind kind) {
    return kind == dravo::BitValue ? 1 : kind == dravo::WordValue ? 2 : 4;
}

// The first bytes of a text stand for raw values as well: each is shown as a text of its own, which reads back.
void showAndType(dravo::ValueKind kind, const ValueFormat &format, QByteArray raw) {
    const int count = raw.size() / bytesOf(kind);
    raw.truncate(count * bytesOf(kind));
    for (int i = 0; kind == dravo::BitValue && i < raw.size(); ++i) {
        raw[i] = char(raw.at(i) & 1);
    }
    const QStringList shown = valueTexts(kind, format, raw, count);
    const TypedValues typed = valueBytes(kind, format, shown);
    expect(typed.faults.isEmpty() && typed.bytes == raw, "a value reads otherwise than it is shown");
}

// A whole number without a prefix stands for itself, and negative ones for their two's complement.
void meansItself(dravo::ValueKind kind, Notation notation, const QString &text) {
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    const ValueFormat format{notation, std::nullopt, QString()};
    const TypedValues typed = valueBytes(kind, format, {text});
    if (!isNumber || !typed.faults.isEmpty() || text.trimmed() != text) {
        return;
    }
    const int bits = kind == dravo::BitValue ? 1 : 8 * bytesOf(kind);
    const qint64 end = qint64(1) << (notation == Notation::Signed ? bits - 1 : bits);
    expect(number < end && number >= (bits == 1 ? 0 : -(qint64(1) << (bits - 1))),
           "a number is taken that does not fit");
    expect(valueAt(kind, typed.bytes, 0) == (quint64(number) & ((quint64(1) << bits) - 1)), "a number is another one");
}

}  // namespace

void readAsValues(const QByteArray &text) {
    QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    while (lines.size() < 5) {
        lines.append(QString());
    }
    const dravo::ValueKind kind = dravo::ValueKind(lines.takeFirst().size() % 3);
    const QString format = lines.takeFirst();
    const QString scale = lines.takeFirst();
    const QString offset = lines.takeFirst();
    const FormatTexts texts{format, scale, offset, lines.takeFirst()};
    ValueFormat readInto;
    const QList<dravo::VariableFault> faults = readFormat(texts, kind, &readInto);
    for (const dravo::VariableFault &fault : faults) {
        expect(!fault.reason.isEmpty() && !fault.field.isEmpty(), "a format is refused without a word");
    }
    for (const QString &line : lines) {
        meansItself(kind, Notation::Decimal, line);
        meansItself(dravo::WordValue, Notation::Signed, line);
        meansItself(dravo::DoubleWordValue, Notation::Signed, line);
        const std::optional<quint32> bits = floatBits(line);
        expect(!bits || floatBits(floatText(*bits)) == bits, "a float reads otherwise than it is shown");
    }
    if (!faults.isEmpty()) {
        return;
    }
    showAndType(kind, readInto, text.right(64));
    const TypedValues typed = valueBytes(kind, readInto, lines);
    expectWords(typed.faults);
    expect(typed.bytes.size() == (lines.size() - typed.faults.size()) * bytesOf(kind),
           "a value is neither taken nor refused");
    showAndType(kind, readInto, typed.bytes);
}
