#include "host/screen.h"

#define NCURSES_NOMACROS 1
#include <curses.h>
#undef OK  // a macro, not needed, of a common name

#include <cwchar>

namespace {

constexpr int kDrawEveryMs = 200;
constexpr int kHeaderRows = 2;
constexpr int kFooterRows = 6;  // a blank row, three of statistics, message, keys
constexpr int kLongestTyped = 1000;
constexpr int kEscape = 27;
constexpr int kRubout = 127;

struct Column {
    const char *title;
    int at;
};
constexpr Column kColumns[] = {{"label", 0},  {"type", 24}, {"address", 30}, {"station", 39},
                               {"state", 47}, {"age", 59},  {"values", 68}};

/// Writes text into the cells from column on, as many as width; wide characters take two.
void putText(int row, int column, int width, const QString &text) {
    std::wstring shown;
    int used = 0;
    for (const wchar_t character : printable(text).toStdWString()) {
        const int cells = qMax(wcwidth(character), 0);
        if (used + cells > width) {
            break;
        }
        used += cells;
        shown.push_back(character);
    }
    mvaddnwstr(row, column, shown.c_str(), int(shown.size()));
}

QString ageText(qint64 ageMs) {
    if (ageMs < 0) {
        return QStringLiteral("-");
    }
    return ageMs < 10000 ? QStringLiteral("%1 ms").arg(ageMs) : QStringLiteral("%1 s").arg(ageMs / 1000);
}

int attributeOf(ValueState::Condition condition) {
    switch (condition) {
        case ValueState::Condition::Failing:
            return int(A_BOLD);
        case ValueState::Condition::Stale:
        case ValueState::Condition::NeverRead:
            return int(A_DIM);
        case ValueState::Condition::Fresh:
            break;
    }
    return int(A_NORMAL);
}

}  // namespace

Screen::Screen() {
    terminal_ = newterm(nullptr, stdout, stdin);
    if (!isOpen()) {
        return;
    }
    cbreak();  // keeps Ctrl-C a signal
    noecho();
    nonl();
    keypad(stdscr, true);
    nodelay(stdscr, true);
    set_escdelay(50);
    curs_set(0);
}

Screen::~Screen() {
    if (isOpen()) {
        endwin();
        delscreen(terminal_);
    }
}

Screen::Wish Screen::poll(const MonitorModel &model) {
    Wish wish;
    wint_t key = 0;
    for (int kind = get_wch(&key); kind != ERR && wish.kind == Wish::Kind::None;
         kind = wish.kind == Wish::Kind::None ? get_wch(&key) : ERR) {
        dirty_ = true;
        wish = handleKey(int(key), kind != KEY_CODE_YES, model);
    }
    if (dirty_ || !sinceDrawn_.isValid() || sinceDrawn_.elapsed() >= kDrawEveryMs) {
        draw(model);
    }
    return wish;
}

Screen::Wish Screen::handleKey(int key, bool isCharacter, const MonitorModel &model) {
    Wish wish;
    if (editing_) {
        editKey(key, isCharacter, &wish);
    } else if (isCharacter) {
        if (key == 'q' || key == 'Q') {
            wish.kind = Wish::Kind::Leave;
        } else if (key == 'w' || key == 'W') {
            editing_ = true;
            typed_.clear();
            message_.clear();
        } else if (key == 'j' || key == 'k') {
            select(selected_ + (key == 'j' ? 1 : -1), model);
        }
    } else if (key == KEY_UP || key == KEY_DOWN) {
        select(selected_ + (key == KEY_DOWN ? 1 : -1), model);
    } else if (key == KEY_PPAGE || key == KEY_NPAGE) {
        select(selected_ + (key == KEY_NPAGE ? 1 : -1) * valueRows(), model);
    } else if (key == KEY_HOME || key == KEY_END) {
        select(key == KEY_HOME ? 0 : model.variables().size() - 1, model);
    }
    return wish;
}

void Screen::editKey(int key, bool isCharacter, Wish *wish) {
    if (key == kEscape && isCharacter) {
        editing_ = false;
    } else if ((isCharacter && (key == '\r' || key == '\n')) || (!isCharacter && key == KEY_ENTER)) {
        editing_ = false;
        if (!typed_.trimmed().isEmpty()) {
            *wish = {Wish::Kind::Write, selected_, typed_};
        }
    } else if ((isCharacter && (key == '\b' || key == kRubout)) || (!isCharacter && key == KEY_BACKSPACE)) {
        typed_.chop(1);
    } else if (isCharacter && key >= ' ' && typed_.size() < kLongestTyped) {
        const wchar_t character = wchar_t(key);
        typed_ += QString::fromWCharArray(&character, 1);
    }
}

int Screen::valueRows() const {
    return qMax(getmaxy(stdscr) - kHeaderRows - kFooterRows, 1);
}

void Screen::select(int row, const MonitorModel &model) {
    selected_ = qBound(0, row, model.variables().size() - 1);
}

void Screen::draw(const MonitorModel &model) {
    sinceDrawn_.start();
    dirty_ = false;
    const int rows = valueRows();
    const int width = getmaxx(stdscr);
    top_ = qBound(selected_ - rows + 1, top_, selected_);
    werase(stdscr);
    putText(0, 0, width, QStringLiteral("dravo-host monitor   %1 variables").arg(model.variables().size()));
    drawValues(model, rows);
    int row = kHeaderRows + qMin(rows, model.variables().size()) + 1;
    for (const QString &line : model.statisticsLines()) {
        putText(row++, 0, width, line);
    }
    if (editing_) {
        const QString prompt = QStringLiteral("write %1: %2").arg(model.variables().at(selected_).label, typed_);
        putText(row++, 0, width, prompt.right(qMax(width - 1, 1)) + QLatin1Char('_'));
        putText(row, 0, width, QStringLiteral("Enter writes   Esc gives up"));
    } else {
        putText(row++, 0, width, message_);
        putText(row, 0, width, QStringLiteral("arrows select   w write   q leave"));
    }
    wrefresh(stdscr);
}

void Screen::drawValues(const MonitorModel &model, int rows) {
    const int width = getmaxx(stdscr);
    const int count = int(std::size(kColumns));
    const auto put = [&](int row, int column, const QString &text) {
        const int end = column + 1 < count ? kColumns[column + 1].at - 1 : width;
        putText(row, kColumns[column].at, qMin(end, width) - kColumns[column].at, text);
    };
    wattrset(stdscr, int(A_UNDERLINE));
    for (int column = 0; column < count; ++column) {
        put(1, column, QLatin1String(kColumns[column].title));
    }
    for (int i = 0; i < rows && top_ + i < model.variables().size(); ++i) {
        const Variable &variable = model.variables().at(top_ + i);
        const ValueLine line = model.valueLine(variable);
        const bool failing = line.state.code != 0;
        const QStringList cells{
            variable.label,
            QString::number(variable.elemType),
            variable.addressText,
            QString::number(variable.station),
            conditionName(line.state.condition) + (failing ? QStringLiteral(" %1").arg(line.state.code) : QString()),
            ageText(line.state.ageMs),
            line.values.join(QLatin1Char(' ')) + (failing ? QStringLiteral("   ") + line.meaning : QString())};
        wattrset(stdscr, attributeOf(line.state.condition) | (top_ + i == selected_ ? int(A_REVERSE) : 0));
        for (int column = 0; column < count; ++column) {
            put(kHeaderRows + i, column, cells.at(column));
        }
    }
    wattrset(stdscr, int(A_NORMAL));
}
