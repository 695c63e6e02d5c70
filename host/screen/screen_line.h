// What stands on the live screen, line by line, and which keys move it, in words that know no terminal. Pure; any
// thread.
#ifndef DRAVO_HOST_SCREEN_SCREEN_LINE_H
#define DRAVO_HOST_SCREEN_SCREEN_LINE_H

#include <QtCore/QString>
#include <QtCore/QVector>

enum class Tone { Plain, Strong, Good, Warning, Bad, Faint };

struct Span {
    QString text;  // printable
    Tone tone = Tone::Plain;
};

struct ScreenLine {
    QVector<Span> spans;
    bool reversed = false;
    bool underlined = false;

    ScreenLine() = default;
    explicit ScreenLine(const QString &text, Tone tone = Tone::Plain) : spans{{text, tone}} {}
    QString text() const {
        QString all;
        for (const Span &span : spans) {
            all += span.text;
        }
        return all;
    }
};
using ScreenLines = QVector<ScreenLine>;

/// In cells.
struct ScreenSize {
    int rows = 24;
    int columns = 80;
};

struct Key {
    enum class Kind { Character, Up, Down, PageUp, PageDown, Home, End, Enter, Escape, Backspace, Tab, Other };
    Kind kind = Kind::Other;
    QString text;  // Character: as typed

    bool is(char character) const {
        return kind == Kind::Character && text.compare(QLatin1Char(character), Qt::CaseInsensitive) == 0;
    }
};

#endif  // DRAVO_HOST_SCREEN_SCREEN_LINE_H
