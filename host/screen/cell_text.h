// Text by the cells it takes on a terminal, where wide characters take two and accents none, as the process's locale
// has it. Whatever is left out is marked. Any thread.
#ifndef DRAVO_HOST_SCREEN_CELL_TEXT_H
#define DRAVO_HOST_SCREEN_CELL_TEXT_H

#include <QtCore/QStringList>

/// Stands where something was left out; one cell: an ellipsis, or '~' where the locale has none.
QString cutMark();

/// The text as it is printed: what cannot be becomes a blank or a replacement character.
QString shownText(const QString &text);
int cellsOf(const QString &text);

/// The text with blanks behind it, or before it. It is never cut, and what the locale lacks stays: records go to files.
QString padded(const QString &text, int cells);
QString paddedBefore(const QString &text, int cells);

// These give text as it is printed.

/// The text, or its beginning and the mark. @param cells  0 or above; at 0 nothing fits, not even the mark.
QString fitted(const QString &text, int cells);
/// The text, or the mark and its end.
QString fittedEnd(const QString &text, int cells);
/// The whole text in lines, broken at blanks where a line has some. @param cells  2 or above.
QStringList wrapped(const QString &text, int cells);

#endif  // DRAVO_HOST_SCREEN_CELL_TEXT_H
