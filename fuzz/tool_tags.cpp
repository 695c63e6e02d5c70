// Tag lists, and the CSV that they are.
#include "fuzz/tool_texts.h"
#include "host/tags/csv_text.h"
#include "host/tags/tag_list.h"
#include "host/tags/value_text.h"

namespace {

constexpr int kMostFaults = 60;  // the twentieth ends it, on whatever line

QString written(const Tag &tag) {
    QStringList fields{tag.label,
                       QString::number(tag.elemType),
                       tag.addressText,
                       QString::number(tag.station),
                       QString::number(tag.count),
                       notationNames().at(int(tag.format.notation))};
    const std::optional<Scaling> &scaling = tag.format.scaling;
    fields << (scaling ? scaledText({scaling->scale, 0, scaling->decimals}, 1) : QString());
    fields << (scaling ? scaledText({0, scaling->offset, scaling->decimals}, 1) : QString()) << tag.format.unit;
    for (QString &field : fields) {
        field = csvField(field);
    }
    return fields.join(QLatin1Char(',')) + QLatin1Char('\n');
}

bool sameScaling(const std::optional<Scaling> &a, const std::optional<Scaling> &b) {
    return a.has_value() == b.has_value() &&
           (!a || (a->scale == b->scale && a->offset == b->offset && a->decimals == b->decimals));
}

bool same(const Tag &a, const Tag &b) {
    return a.label == b.label && a.addressText == b.addressText && a.elemType == b.elemType && a.station == b.station &&
           a.count == b.count && a.kind == b.kind && a.driverCount == b.driverCount &&
           a.elementAddress == b.elementAddress && a.firstBit == b.firstBit &&
           a.elements.address == b.elements.address && a.elements.count == b.elements.count &&
           a.format.notation == b.format.notation && a.format.unit == b.format.unit &&
           sameScaling(a.format.scaling, b.format.scaling);
}

}  // namespace

void readAsTagList(const QByteArray &text) {
    const TagList list = parseTagList(text);
    expectWords(list.faults);
    expect(list.faults.size() <= kMostFaults, "the faults of a tag list have no bound");
    if (!list.faults.isEmpty()) {
        return;
    }
    expect(!list.variables.isEmpty(), "a tag list without variables is taken");
    QString again = QStringLiteral("label,type,address,station,count,format,scale,offset,unit\n");
    for (const Tag &tag : list.variables) {
        again += written(tag);
        const QByteArray bytes(tag.count * 4, char(text.size()));
        const QStringList shown = valueTexts(tag.kind, tag.format, bytes, tag.count);
        expect(shown.size() == tag.count && !shown.contains(QString()), "a value is shown as nothing");
    }
    const TagList reread = parseTagList(again.toUtf8());
    expectWords(reread.faults);
    expect(reread.faults.isEmpty() && reread.variables.size() == list.variables.size(),
           "a tag list is refused as it is written back");
    for (int i = 0; i < list.variables.size(); ++i) {
        expect(same(reread.variables.at(i), list.variables.at(i)), "a tag reads otherwise as it is written back");
    }
}

void readAsCsv(const QByteArray &bytes) {
    const QString text = QString::fromUtf8(bytes);
    CsvReader reader(text);
    int line = 0;
    for (CsvRow row; reader.next(&row);) {
        expect(row.line > line && !row.fields.isEmpty(), "rows stand on the same line, or are empty");
        expect((row.badField == 0) == row.badReason.isEmpty() && row.badField <= row.fields.size(),
               "a field is bad and there is none, or no reason");
        line = row.line;
        QStringList fields;
        for (const QString &field : row.fields) {
            fields.append(csvField(field));
        }
        const QString again = fields.join(QLatin1Char(','));
        CsvReader second(again);
        CsvRow reread;
        const bool any = second.next(&reread);
        expect(!any || reread.badField == 0, "a row is bad as it is written back");
        expect(any ? reread.fields == row.fields : again.isEmpty(), "a row reads otherwise as it is written back");
    }
    expect(reader.linesLeft() == 0, "lines are left behind the last row");
}
