#include "host/tags/tag_list.h"

#include <QtCore/QFile>
#include <QtCore/QTextCodec>

#include "host/tags/quoted_text.h"
#include "host/tags/tag_columns.h"
#include "host/tags/variable_faults.h"

// In a static library nobody refers to the resource, so it is registered by hand; the macro wants no namespace around.
static void registerSample() {
    Q_INIT_RESOURCE(sample);
}

namespace {

constexpr qint64 kLargestFile = 16LL * 1024 * 1024;

class TagListReader {
public:
    TagList read(const QString &text) {
        CsvReader reader(text);
        CsvRow row;
        reader.next(&row);
        list_.faults = columns_.read(row);
        if (!columns_.complete()) {
            return list_;
        }
        bool any = false;
        while (list_.faults.size() < kMostTagFaults && reader.next(&row)) {
            any = true;
            readRow(row);
        }
        const int left = reader.linesLeft();
        const bool readsOn = list_.faults.size() < kMostTagFaults;
        if (!any && readsOn) {
            list_.faults.append(QStringLiteral("line 2: the list names no variable"));
        } else if (!readsOn && left > 0) {
            list_.faults.append(QStringLiteral("%1 lines more are not read").arg(left));
        }
        return list_;
    }

private:
    void readRow(const CsvRow &row) {
        row_ = &row;
        const int faultsBefore = list_.faults.size();
        const int fields = row.fields.size();
        if (row.badField != 0) {
            fault(row.badField, row.badReason);
        } else if (fields != columns_.size()) {
            fault(qMin(fields, columns_.size()) + (fields > columns_.size() ? 1 : 0),
                  QStringLiteral("the line has %1 %2 instead of %3")
                      .arg(QString::number(fields), QLatin1String(fields == 1 ? "field" : "fields"),
                           QString::number(columns_.size())));
        } else {
            const Tag tag = readTag();
            if (list_.faults.size() == faultsBefore) {
                list_.variables.append(tag);
            }
        }
    }

    Tag readTag() {
        Tag tag;
        tag.label = field("label");
        tag.addressText = field("address");
        if (tag.label.isEmpty()) {
            fault("label", QStringLiteral("is empty"));
        }
        // A number that does not convert is reported here; the variable's default then stands in for the other checks.
        const bool typeGood = readNumber("type", &tag.elemType);
        readNumber("station", &tag.station);
        readNumber("count", &tag.count);
        for (const dravo::VariableFault &found : resolveWritten(&tag)) {
            if (typeGood || found.field != QLatin1String("address")) {
                fault(found.field.toLatin1().constData(), found.reason);
            }
        }
        const FormatTexts texts{field("format"), field("scale"), field("offset"), field("unit")};
        for (const dravo::VariableFault &found :
             readFormat(texts, typeGood ? kindOfType(tag.elemType) : std::nullopt, &tag.format)) {
            fault(found.field.toLatin1().constData(), found.reason);
        }
        return tag;
    }

    bool readNumber(const char *name, int *number) {
        bool good = false;
        const int value = field(name).toInt(&good);
        if (good) {
            *number = value;
        } else {
            fault(name, quoted(field(name)) + QStringLiteral(" is no whole number"));
        }
        return good;
    }

    QString field(const char *name) const { return columns_.field(*row_, name); }
    template <typename Column>
    void fault(Column column, const QString &reason) {
        list_.faults.append(columns_.fault(*row_, column, reason));
    }

    TagList list_;
    TagColumns columns_;
    const CsvRow *row_ = nullptr;
};

/// Everything that a file holds. @return why it cannot be read.
QString readAll(const QString &fileName, QByteArray *text) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("cannot open it: ") + file.errorString();
    }
    *text = file.read(kLargestFile + 1);
    if (file.error() != QFileDevice::NoError) {
        return QStringLiteral("cannot read it: ") + file.errorString();
    }
    return text->size() > kLargestFile ? QStringLiteral("is larger than 16 MiB") : QString();
}

}  // namespace

TagList parseTagList(const QByteArray &text) {
    QTextCodec::ConverterState state;  // its default drops a byte order mark
    const QString decoded = QTextCodec::codecForName("UTF-8")->toUnicode(text.constData(), text.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0) {
        TagList refused;
        refused.faults.append(QStringLiteral("is not UTF-8 text"));
        return refused;
    }
    return TagListReader().read(decoded);
}

QVector<dravo::Variable> variablesOf(const QVector<Tag> &tags) {
    QVector<dravo::Variable> variables;
    variables.reserve(tags.size());
    for (const Tag &tag : tags) {
        variables.append(tag);
    }
    return variables;
}

TagList loadTagList(const QString &fileName) {
    registerSample();
    QByteArray text;
    const QString unreadable = readAll(fileName.isEmpty() ? QStringLiteral(":/sample_tags.csv") : fileName, &text);
    TagList list;
    if (unreadable.isEmpty()) {
        list = parseTagList(text);
    } else {
        list.faults.append(unreadable);
    }
    for (QString &fault : list.faults) {
        fault.prepend(QStringLiteral("tag list ") + fileName + QStringLiteral(": "));
    }
    return list;
}
