// Comma-separated text with quoted fields as spreadsheets write them. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_CSV_TEXT_H
#define DRAVO_HOST_TAGS_CSV_TEXT_H

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

struct CsvRow {
    int line = 0;  // of the row's first character, from 1
    QStringList fields;
    int badField = 0;  // number, from 1, of the field whose quotes are wrong; 0: none
    QString badReason;
};

/// Rows of text; lines end in LF or CR LF, blank lines are left out. A quoted field may hold commas, line ends and,
/// doubled, quotes.
QVector<CsvRow> csvRows(const QString &text);

/// The field as it goes into a row: quoted where it has to be.
QString csvField(const QString &field);

#endif  // DRAVO_HOST_TAGS_CSV_TEXT_H
