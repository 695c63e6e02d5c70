#include "host/tags/tag_list.h"

#include <QtCore/QFile>
#include <QtCore/QTextCodec>

#include "host/tags/csv_text.h"

// In a static library nobody refers to the resource, so it is registered by hand; the macro wants no namespace around.
static void registerSample() {
    Q_INIT_RESOURCE(sample);
}

namespace {

constexpr qint64 kLargestFile = 16LL * 1024 * 1024;

const QStringList &columns() {
    static const QStringList names{QStringLiteral("label"), QStringLiteral("type"), QStringLiteral("address"),
                                   QStringLiteral("station"), QStringLiteral("count")};
    return names;
}

class TagListReader {
public:
    TagList read(const QString &text) {
        const QVector<CsvRow> rows = csvRows(text);
        if (rows.isEmpty() || rows.first().fields != columns()) {
            list_.faults.append(QStringLiteral("line %1, column 1 (label): the first line must be %2")
                                    .arg(rows.isEmpty() ? 1 : rows.first().line)
                                    .arg(columns().join(QLatin1Char(','))));
            return list_;
        }
        for (int i = 1; i < rows.size(); ++i) {
            readRow(rows.at(i));
        }
        if (rows.size() == 1) {
            list_.faults.append(QStringLiteral("line 2, column 1 (label): the list names no variable"));
        }
        return list_;
    }

private:
    void readRow(const CsvRow &row) {
        row_ = &row;
        faultsBefore_ = list_.faults.size();
        if (row.badField != 0) {
            fault(row.badField, row.badReason);
        } else if (row.fields.size() != columns().size()) {
            fault(qMin(row.fields.size(), columns().size()) + (row.fields.size() > columns().size() ? 1 : 0),
                  QStringLiteral("the line has %1 fields instead of %2").arg(row.fields.size()).arg(columns().size()));
        }
        if (list_.faults.size() > faultsBefore_) {
            return;
        }

        dravo::Variable variable;
        variable.label = row.fields.at(0);
        variable.addressText = row.fields.at(2);
        if (variable.label.isEmpty()) {
            fault(1, QStringLiteral("is empty"));
        }
        // A number that does not convert is reported here; the variable's default then stands in for the other checks.
        const bool typeGood = readNumber(2, &variable.elemType);
        readNumber(4, &variable.station);
        readNumber(5, &variable.count);
        for (const dravo::VariableFault &found : dravo::resolve(&variable)) {
            if (typeGood || found.field != QLatin1String("address")) {
                fault(columns().indexOf(found.field) + 1, found.reason);
            }
        }
        if (list_.faults.size() == faultsBefore_) {
            list_.variables.append(variable);
        }
    }

    bool readNumber(int column, int *number) {
        bool good = false;
        const int value = row_->fields.at(column - 1).toInt(&good);
        if (good) {
            *number = value;
        } else {
            fault(column, QStringLiteral("'%1' is no whole number").arg(row_->fields.at(column - 1)));
        }
        return good;
    }

    void fault(int column, const QString &reason) {
        const QString name = columns().value(column - 1, QStringLiteral("extra"));
        list_.faults.append(
            QStringLiteral("line %1, column %2 (%3): %4").arg(row_->line).arg(column).arg(name, reason));
    }

    TagList list_;
    const CsvRow *row_ = nullptr;
    int faultsBefore_ = 0;
};

}  // namespace

TagList parseTagList(const QByteArray &text) {
    QTextCodec::ConverterState state;  // its default drops a byte order mark
    const QString decoded = QTextCodec::codecForName("UTF-8")->toUnicode(text.constData(), text.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0) {
        TagList refused;
        refused.faults.append(QStringLiteral("the tag list is not UTF-8 text"));
        return refused;
    }
    return TagListReader().read(decoded);
}

TagList loadTagList(const QString &fileName) {
    registerSample();
    QFile file(fileName.isEmpty() ? QStringLiteral(":/sample_tags.csv") : fileName);
    TagList refused;
    if (!file.open(QIODevice::ReadOnly)) {
        refused.faults.append(QStringLiteral("cannot open the tag list %1: %2").arg(fileName, file.errorString()));
        return refused;
    }
    const QByteArray text = file.read(kLargestFile + 1);
    if (file.error() != QFileDevice::NoError) {
        refused.faults.append(QStringLiteral("cannot read the tag list %1: %2").arg(fileName, file.errorString()));
    } else if (text.size() > kLargestFile) {
        refused.faults.append(QStringLiteral("the tag list %1 is larger than 16 MiB").arg(fileName));
    }
    return refused.faults.isEmpty() ? parseTagList(text) : refused;
}
