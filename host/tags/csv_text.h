// Comma-separated text with quoted fields as spreadsheets write them. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_CSV_TEXT_H
#define DRAVO_HOST_TAGS_CSV_TEXT_H

#include <QtCore/QString>
#include <QtCore/QStringList>

struct CsvRow {
    int line = 0;  // of the row's first character, from 1
    QStringList fields;
    int badField = 0;  // number, from 1, of the field whose quotes are wrong; 0: none
    QString badReason;
};

/// Takes text apart row by row; lines end in LF or CR LF, blank lines are left out. A quoted field may hold commas,
/// line ends and, doubled, quotes.
class CsvReader {
public:
    /// text outlives the reader.
    explicit CsvReader(const QString &text) : text_(text) {}

    /// @return false: there is no row more.
    bool next(CsvRow *row);
    /// Lines behind the last row, blank ones too.
    int linesLeft() const;

private:
    CsvRow readRow();
    QString plainField(CsvRow *row);
    QString quotedField(CsvRow *row);
    static void fault(CsvRow *row, const QString &reason);
    bool at(QChar character) const;
    bool atLineEnd() const;
    bool atFieldEnd() const { return atLineEnd() || at(QLatin1Char(',')); }
    QChar takeAny();
    bool take(QChar character);

    const QString &text_;
    int position_ = 0;
    int line_ = 1;
};

/// The field as it goes into a row: quoted where it has to be.
QString csvField(const QString &field);

#endif  // DRAVO_HOST_TAGS_CSV_TEXT_H
