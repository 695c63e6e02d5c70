// A value that a person has written, as a fault names it. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_QUOTED_TEXT_H
#define DRAVO_HOST_TAGS_QUOTED_TEXT_H

#include <QtCore/QString>

/// In quotes, on one line whatever stands in it: control characters become blanks, and all but the first 40 characters
/// three dots.
inline QString quoted(const QString &text) {
    constexpr int kLongest = 40;
    QString shown = text.size() > kLongest ? text.left(kLongest) + QStringLiteral("...") : text;
    for (QChar &character : shown) {
        if (character.category() == QChar::Other_Control) {
            character = QLatin1Char(' ');
        }
    }
    return QLatin1Char('\'') + shown + QLatin1Char('\'');
}

/// A fault of a value: "'99' must be 0 to 21". Reasons that begin with a value stay as they are.
inline QString valueAndReason(const QString &text, const QString &reason) {
    return reason.startsWith(QLatin1Char('\'')) ? reason : quoted(text) + QLatin1Char(' ') + reason;
}

#endif  // DRAVO_HOST_TAGS_QUOTED_TEXT_H
