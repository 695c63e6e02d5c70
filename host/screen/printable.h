// Any text as it can stand on one line of a terminal. Pure; any thread.
#ifndef DRAVO_HOST_SCREEN_PRINTABLE_H
#define DRAVO_HOST_SCREEN_PRINTABLE_H

#include <QtCore/QString>

/// Control characters, line ends among them, become blanks.
inline QString printable(QString text) {
    for (QChar &character : text) {
        if (character.category() == QChar::Other_Control) {
            character = QLatin1Char(' ');
        }
    }
    return text;
}

#endif  // DRAVO_HOST_SCREEN_PRINTABLE_H
