#include "host/screen/cell_text.h"

#include <cwchar>

#include "host/screen/printable.h"

namespace {

constexpr wchar_t kEllipsis = 0x2026;
constexpr wchar_t kReplacement = 0xfffd;

int cells(wchar_t character) {
    return qMax(wcwidth(character), 0);
}

std::wstring shownCharacters(const QString &text) {
    std::wstring shown = printable(text).toStdWString();
    for (wchar_t &character : shown) {
        if (wcwidth(character) < 0) {
            character = wcwidth(kReplacement) == 1 ? kReplacement : L'?';
        }
    }
    return shown;
}

int cells(const std::wstring &text) {
    int sum = 0;
    for (const wchar_t character : text) {
        sum += cells(character);
    }
    return sum;
}

QString blanks(int count) {
    return QString(qMax(count, 0), QLatin1Char(' '));
}

/// How many of the characters from first on fit.
size_t fittingFrom(const std::wstring &text, size_t first, int room) {
    size_t end = first;
    while (end < text.size() && cells(text[end]) <= room) {
        room -= cells(text[end++]);
    }
    return end - first;
}

}  // namespace

QString cutMark() {
    return wcwidth(kEllipsis) == 1 ? QString(QChar(kEllipsis)) : QString(QLatin1Char('~'));
}

QString shownText(const QString &text) {
    return QString::fromStdWString(shownCharacters(text));
}

int cellsOf(const QString &text) {
    return cells(shownCharacters(text));
}

QString fitted(const QString &text, int room) {
    const std::wstring shown = shownCharacters(text);
    if (cells(shown) <= room) {
        return QString::fromStdWString(shown);
    }
    return room < 1 ? QString() : QString::fromStdWString(shown.substr(0, fittingFrom(shown, 0, room - 1))) + cutMark();
}

QString fittedEnd(const QString &text, int room) {
    std::wstring shown = shownCharacters(text);
    int used = cells(shown);
    if (used <= room) {
        return QString::fromStdWString(shown);
    }
    size_t first = 0;
    while (first < shown.size() && used > room - 1) {
        used -= cells(shown[first++]);
    }
    return room < 1 ? QString() : cutMark() + QString::fromStdWString(shown.substr(first));
}

QString padded(const QString &text, int room) {
    return printable(text) + blanks(room - cellsOf(text));
}

QString paddedBefore(const QString &text, int room) {
    return blanks(room - cellsOf(text)) + printable(text);
}

QStringList wrapped(const QString &text, int room) {
    const std::wstring shown = shownCharacters(text);
    QStringList lines;
    for (size_t first = 0; first < shown.size();) {
        size_t length = qMax<size_t>(fittingFrom(shown, first, room), 1);
        size_t next = first + length;
        if (next < shown.size()) {
            const size_t blank = shown.rfind(L' ', next);
            if (blank != std::wstring::npos && blank > first) {
                length = blank - first;
                next = blank + 1;
            }
        }
        lines.append(QString::fromStdWString(shown.substr(first, length)));
        first = next;
    }
    return lines;
}
