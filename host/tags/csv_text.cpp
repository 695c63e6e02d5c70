#include "host/tags/csv_text.h"

namespace {
const QChar kQuote = QLatin1Char('"');
}

bool CsvReader::next(CsvRow *row) {
    while (position_ < text_.size()) {
        *row = readRow();
        const bool blank = row->fields.size() == 1 && row->fields.first().isEmpty() && row->badField == 0;
        if (!blank) {
            return true;
        }
    }
    return false;
}

int CsvReader::linesLeft() const {
    const bool unended = position_ < text_.size() && !text_.endsWith(QLatin1Char('\n'));
    return text_.midRef(position_).count(QLatin1Char('\n')) + (unended ? 1 : 0);
}

CsvRow CsvReader::readRow() {
    CsvRow row;
    row.line = line_;
    do {
        row.fields.append(at(kQuote) ? quotedField(&row) : plainField(&row));
    } while (take(QLatin1Char(',')));
    take(QLatin1Char('\r'));
    take(QLatin1Char('\n'));
    return row;
}

QString CsvReader::plainField(CsvRow *row) {
    QString field;
    while (!atFieldEnd()) {
        if (at(kQuote)) {
            fault(row, QStringLiteral("a quote inside a field that does not start with one"));
        }
        field.append(takeAny());
    }
    return field;
}

QString CsvReader::quotedField(CsvRow *row) {
    QString field;
    takeAny();
    while (position_ < text_.size()) {
        const QChar character = takeAny();
        if (character != kQuote) {
            field.append(character);
        } else if (at(kQuote)) {
            field.append(takeAny());
        } else {
            if (!atFieldEnd()) {
                fault(row, QStringLiteral("text after the closing quote"));
            }
            while (!atFieldEnd()) {
                takeAny();
            }
            return field;
        }
    }
    fault(row, QStringLiteral("the closing quote is missing"));
    return field;
}

void CsvReader::fault(CsvRow *row, const QString &reason) {
    if (row->badField != 0) {
        return;
    }
    row->badField = row->fields.size() + 1;
    row->badReason = reason;
}

bool CsvReader::at(QChar character) const {
    return position_ < text_.size() && text_.at(position_) == character;
}

bool CsvReader::atLineEnd() const {
    const bool crlf = at(QLatin1Char('\r')) && text_.mid(position_ + 1, 1) == QLatin1String("\n");
    return position_ >= text_.size() || at(QLatin1Char('\n')) || crlf;
}

QChar CsvReader::takeAny() {
    const QChar character = text_.at(position_++);
    if (character == QLatin1Char('\n')) {
        ++line_;
    }
    return character;
}

bool CsvReader::take(QChar character) {
    if (!at(character)) {
        return false;
    }
    takeAny();
    return true;
}

QString csvField(const QString &field) {
    const bool plain = !field.contains(kQuote) && !field.contains(QLatin1Char(',')) &&
                       !field.contains(QLatin1Char('\n')) && !field.contains(QLatin1Char('\r'));
    if (plain) {
        return field;
    }
    return kQuote + QString(field).replace(kQuote, QStringLiteral("\"\"")) + kQuote;
}
