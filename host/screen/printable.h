// Any text as it can stand on one line of a terminal. Pure; any thread.
#ifndef DRAVO_HOST_SCREEN_PRINTABLE_H
#define DRAVO_HOST_SCREEN_PRINTABLE_H

#include <QtCore/QString>

/// Control characters, line ends among them, and those that turn the direction of writing become blanks.
inline QString printable(QString text) {
    for (QChar &character : text) {
        switch (character.category()) {
            case QChar::Other_Control:
            case QChar::Other_Format:
            case QChar::Separator_Line:
            case QChar::Separator_Paragraph:
                character = QLatin1Char(' ');
                break;
            default:
                break;
        }
    }
    return text;
}

#endif  // DRAVO_HOST_SCREEN_PRINTABLE_H
