#include "host/tags/csv_text.h"

namespace {

const QChar kQuote = QLatin1Char('"');

class CsvReader {
public:
    explicit CsvReader(const QString &text) : text_(text) {}

    QVector<CsvRow> rows() {
        QVector<CsvRow> rows;
        while (position_ < text_.size()) {
            const CsvRow next = row();
            const bool blank = next.fields.size() == 1 && next.fields.first().isEmpty() && next.badField == 0;
            if (!blank) {
                rows.append(next);
            }
        }
        return rows;
    }

private:
    CsvRow row() {
        CsvRow row;
        row.line = line_;
        do {
            row.fields.append(at(kQuote) ? quotedField(&row) : plainField(&row));
        } while (take(QLatin1Char(',')));
        take(QLatin1Char('\r'));
        take(QLatin1Char('\n'));
        return row;
    }

    QString plainField(CsvRow *row) {
        QString field;
        while (!atFieldEnd()) {
            if (at(kQuote)) {
                fault(row, QStringLiteral("a quote inside a field that does not start with one"));
            }
            field.append(next());
        }
        return field;
    }

    QString quotedField(CsvRow *row) {
        QString field;
        next();
        while (position_ < text_.size()) {
            const QChar character = next();
            if (character != kQuote) {
                field.append(character);
            } else if (at(kQuote)) {
                field.append(next());
            } else {
                if (!atFieldEnd()) {
                    fault(row, QStringLiteral("text after the closing quote"));
                }
                while (!atFieldEnd()) {
                    next();
                }
                return field;
            }
        }
        fault(row, QStringLiteral("the closing quote is missing"));
        return field;
    }

    static void fault(CsvRow *row, const QString &reason) {
        if (row->badField != 0) {
            return;
        }
        row->badField = row->fields.size() + 1;
        row->badReason = reason;
    }

    bool at(QChar character) const { return position_ < text_.size() && text_.at(position_) == character; }
    bool atLineEnd() const {
        const bool crlf = at(QLatin1Char('\r')) && text_.mid(position_ + 1, 1) == QLatin1String("\n");
        return position_ >= text_.size() || at(QLatin1Char('\n')) || crlf;
    }
    bool atFieldEnd() const { return atLineEnd() || at(QLatin1Char(',')); }
    QChar next() {
        const QChar character = text_.at(position_++);
        if (character == QLatin1Char('\n')) {
            ++line_;
        }
        return character;
    }
    bool take(QChar character) {
        if (!at(character)) {
            return false;
        }
        next();
        return true;
    }

    const QString &text_;
    int position_ = 0;
    int line_ = 1;
};

}  // namespace

QVector<CsvRow> csvRows(const QString &text) {
    return CsvReader(text).rows();
}

QString csvField(const QString &field) {
    const bool plain = !field.contains(kQuote) && !field.contains(QLatin1Char(',')) &&
                       !field.contains(QLatin1Char('\n')) && !field.contains(QLatin1Char('\r'));
    if (plain) {
        return field;
    }
    return kQuote + QString(field).replace(kQuote, QStringLiteral("\"\"")) + kQuote;
}
