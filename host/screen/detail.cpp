#include "host/screen/detail.h"

#include "host/screen/cell_text.h"
#include "host/screen/row_layout.h"

ScreenLines detailLines(const ShownVariable &shown, int width) {
    const dravo::ValueState &state = shown.state;
    const QString age = state.ageUs < 0 ? QString() : QStringLiteral(", %1 old").arg(ageWords(state.ageUs));
    ScreenLines lines = wrappedLines(shown.variable.label, width, Tone::Strong);
    lines += wrappedLines(placeWords(shown.variable) + QStringLiteral(": ") + stateWords(state) + age, width);
    lines += wrappedLines(shown.meaning, width, toneOf(state.condition));
    lines += wrappedLines(valuesAndUnit(shown), width);
    return lines;
}

QString placeWords(const dravo::Variable &variable) {
    return QStringLiteral("type %1, address %2, station %3, %4 value%5")
        .arg(QString::number(variable.elemType), variable.addressText, QString::number(variable.station),
             QString::number(variable.count), variable.count == 1 ? QString() : QStringLiteral("s"));
}

ScreenLines wrappedLines(const QString &text, int width, Tone tone) {
    ScreenLines lines;
    for (const QString &line : wrapped(text, width)) {
        lines.append(ScreenLine(line, tone));
    }
    return lines;
}

ScreenLines firstLines(const ScreenLines &lines, int rows, int width) {
    if (lines.size() <= rows) {
        return lines;
    }
    ScreenLines first = lines.mid(0, qMax(rows - 1, 0));
    if (rows > 0) {
        const QString more = QStringLiteral("%1 %2 more lines, Enter shows them");
        first.append(ScreenLine(fitted(more.arg(cutMark()).arg(lines.size() - first.size()), width), Tone::Faint));
    }
    return first;
}
