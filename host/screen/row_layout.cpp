#include "host/screen/row_layout.h"

#include <QtCore/QStringList>

#include "host/screen/cell_text.h"

namespace {

constexpr int kLeastLabel = 8;
constexpr int kLeastValues = 12;
constexpr int kLeastMeaning = 8;
constexpr int kLongestAddress = 12;

enum ColumnId { Label, Type, Address, Station, State, Age, Values, kColumns };

struct ScreenColumn {
    const char *title;
    int cells;  // 0: worked out
    bool toTheRight;
    QString (*text)(const ShownVariable &);
};

const ScreenColumn kScreenColumns[kColumns] = {
    {"label", 0, false, [](const ShownVariable &s) { return s.variable.label; }},
    {"type", 4, true, [](const ShownVariable &s) { return QString::number(s.variable.elemType); }},
    {"address", 0, true, [](const ShownVariable &s) { return s.variable.addressText; }},
    {"stn", 3, true, [](const ShownVariable &s) { return QString::number(s.variable.station); }},
    {"state", 12, false, [](const ShownVariable &s) { return stateWords(s.state); }},
    {"age", 7, true, [](const ShownVariable &s) { return ageWords(s.state.ageUs); }},
    {"values", 0, false, nullptr},
};

/// What goes first where a screen is too narrow for all.
const ColumnId kDropped[] = {Type, Address, Station, Age};

QStringList valueTokens(const ShownVariable &shown) {
    QStringList tokens;
    for (const QJsonValue &text : shown.texts) {
        tokens.append(columnText(text.isNull() ? QJsonValue(QStringLiteral("-")) : text));
    }
    if (tokens.count(QStringLiteral("-")) == tokens.size()) {
        tokens = QStringList{QStringLiteral("-")};
    } else if (!shown.unit.isEmpty()) {
        tokens.append(shown.unit);
    }
    return tokens;
}

/// As many whole values as fit before the mark.
QString fittedValues(const QStringList &tokens, int cells) {
    const QString all = tokens.join(QLatin1Char(' '));
    if (cellsOf(all) <= cells) {
        return shownText(all);
    }
    QString text;
    int used = 0;
    for (const QString &token : tokens) {
        const int more = cellsOf(token) + 1;
        if (used + more + 1 > cells) {
            break;
        }
        text += token + QLatin1Char(' ');
        used += more;
    }
    return text.isEmpty() ? fitted(all, cells) : shownText(text) + cutMark();
}

QString valuesAndMeaning(const ShownVariable &shown, int cells) {
    const QString values = fittedValues(valueTokens(shown), cells);
    const int left = cells - cellsOf(values) - 2;
    return shown.meaning.isEmpty() || left < kLeastMeaning
               ? values
               : values + QStringLiteral("  ") + fitted(shown.meaning, left);
}

int sumOf(const QVector<int> &widths) {
    int sum = -1;  // one blank less than columns
    for (const int cells : widths) {
        sum += cells > 0 ? cells + 1 : 0;
    }
    return sum;
}

/// text: of a column, no wider than its cells.
template <typename Text, typename ToneOf>
ScreenLine lineOf(const QVector<int> &widths, const Text &text, const ToneOf &tone) {
    ScreenLine line;
    for (int i = 0; i < kColumns; ++i) {
        if (widths.at(i) > 0) {
            const QString shown = text(i, widths.at(i));
            const bool toTheRight = kScreenColumns[i].toTheRight;
            line.spans.append({toTheRight ? paddedBefore(shown, widths.at(i)) : padded(shown, widths.at(i)), tone(i)});
            line.spans.append({i + 1 < kColumns ? QStringLiteral(" ") : QString(), Tone::Plain});
        }
    }
    return line;
}

}  // namespace

QString stateWords(const dravo::ValueState &state) {
    const QString name = dravo::conditionName(state.condition);
    return state.code != 0 && state.condition != dravo::Down ? QStringLiteral("%1 %2").arg(name).arg(state.code) : name;
}

Tone toneOf(dravo::Condition condition) {
    switch (condition) {
        case dravo::Failing:
        case dravo::NotReadable:
        case dravo::Down:
            return Tone::Bad;
        case dravo::Stale:
            return Tone::Warning;
        case dravo::NeverRead:
            return Tone::Faint;
        case dravo::Fresh:
            break;
    }
    return Tone::Good;
}

QString ageWords(qint64 ageUs) {
    const qint64 ms = ageUs / 1000;
    if (ageUs < 0) {
        return QStringLiteral("-");
    }
    return ms < 10000      ? QStringLiteral("%1 ms").arg(ms)
           : ms < 10000000 ? QStringLiteral("%1 s").arg(ms / 1000)
                           : QStringLiteral("%1 h").arg(ms / 3600000);
}

RowLayout::RowLayout(const QVector<Tag> &variables) {
    for (const Tag &variable : variables) {
        longestLabel_ = qMax(longestLabel_, cellsOf(variable.label));
        longestAddress_ = qMax(longestAddress_, cellsOf(variable.addressText));
    }
}

QVector<int> RowLayout::widths(int width) const {
    QVector<int> widths;
    for (const ScreenColumn &column : kScreenColumns) {
        widths.append(column.cells);
    }
    widths[Address] = qBound(7, longestAddress_, kLongestAddress);
    widths[Label] = kLeastLabel;
    widths[Values] = kLeastValues;
    for (const ColumnId dropped : kDropped) {
        widths[dropped] = sumOf(widths) > width ? 0 : widths.at(dropped);
    }
    const int room = width - sumOf(widths) + kLeastLabel + kLeastValues;
    widths[Label] = qBound(kLeastLabel, longestLabel_, qMax(kLeastLabel, room * 2 / 5));
    widths[Values] = room - widths.at(Label);
    return widths;
}

ScreenLine RowLayout::titles(int width) const {
    ScreenLine line = lineOf(
        widths(width), [](int column, int cells) { return fitted(QLatin1String(kScreenColumns[column].title), cells); },
        [](int) { return Tone::Plain; });
    line.underlined = true;
    return line;
}

ScreenLine RowLayout::row(const ShownVariable &shown, int width) const {
    const Tone tone = toneOf(shown.state.condition);
    return lineOf(
        widths(width),
        [&shown](int column, int cells) {
            return column == Values ? valuesAndMeaning(shown, cells)
                                    : fitted(kScreenColumns[column].text(shown), cells);
        },
        [tone](int column) {
            return column == State ? tone : column == Values && tone == Tone::Warning ? Tone::Faint : Tone::Plain;
        });
}
