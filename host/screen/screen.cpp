#include "host/screen/screen.h"

#define NCURSES_NOMACROS 1
#include <curses.h>
#undef OK  // a macro, not needed, of a common name

#include <cwchar>

#include "host/screen/printable.h"

namespace {

constexpr int kDrawEveryMs = 200;
constexpr int kHeaderRows = 2;
constexpr int kFooterRows = 7;  // a blank row, four of statistics, message, keys
constexpr int kLongestTyped = 1000;
constexpr int kEscape = 27;
constexpr int kRubout = 127;

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

int attributeOf(dravo::Condition condition) {
    switch (condition) {
        case dravo::Failing:
        case dravo::NotReadable:
        case dravo::Down:
            return int(A_BOLD);
        case dravo::Stale:
        case dravo::NeverRead:
            return int(A_DIM);
        case dravo::Fresh:
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

Screen::Wish Screen::poll(const MonitorModel &model, qint64 nowUs) {
    Wish wish;
    wint_t key = 0;
    for (int kind = get_wch(&key); kind != ERR && wish.kind == Wish::Kind::None;
         kind = wish.kind == Wish::Kind::None ? get_wch(&key) : ERR) {
        dirty_ = true;
        wish = handleKey(int(key), kind != KEY_CODE_YES, model);
    }
    if (dirty_ || !sinceDrawn_.isValid() || sinceDrawn_.elapsed() >= kDrawEveryMs) {
        draw(model, nowUs);
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
    message_.clear();
}

void Screen::draw(const MonitorModel &model, qint64 nowUs) {
    sinceDrawn_.start();
    dirty_ = false;
    const int rows = valueRows();
    const int width = getmaxx(stdscr);
    top_ = qBound(selected_ - rows + 1, top_, selected_);
    werase(stdscr);
    putText(0, 0, width,
            QStringLiteral("dravo-host monitor   %1 variables%2")
                .arg(model.variables().size())
                .arg(model.isLost() ? QStringLiteral("   DEVICE LOST, opening it again") : QString()));
    drawValues(model, rows, nowUs);
    int row = kHeaderRows + qMin(rows, model.variables().size()) + 1;
    for (const QString &line : model.statisticsLines(nowUs)) {
        putText(row++, 0, width, line);
    }
    if (editing_) {
        const QString prompt = QStringLiteral("write %1: %2").arg(model.variables().at(selected_).label, typed_);
        putText(row++, 0, width, prompt.right(qMax(width - 1, 1)) + QLatin1Char('_'));
        putText(row, 0, width, QStringLiteral("Enter writes   Esc gives up"));
    } else {
        // Where a narrow screen cuts it off: what is wrong with the selected variable.
        const ShownVariable selected = model.shown(model.variables().at(selected_), nowUs);
        putText(row++, 0, width, message_.isEmpty() ? selected.meaning : message_);
        putText(row, 0, width, QStringLiteral("arrows select   w write   q leave"));
    }
    wrefresh(stdscr);
}

void Screen::drawValues(const MonitorModel &model, int rows, qint64 nowUs) {
    const int width = getmaxx(stdscr);
    // text: of a column in this row.
    const auto putRow = [width](int row, const auto &text) {
        int at = 0;
        for (const Column &column : columns()) {
            if (column.title != nullptr) {
                const int left = width - at;
                putText(row, at, column.screenWidth == 0 ? left : qMin(column.screenWidth - 1, left), text(column));
                at += column.screenWidth;
            }
        }
    };
    wattrset(stdscr, int(A_UNDERLINE));
    putRow(1, [](const Column &column) { return QString::fromLatin1(column.title); });
    for (int i = 0; i < rows && top_ + i < model.variables().size(); ++i) {
        const ShownVariable shown = model.shown(model.variables().at(top_ + i), nowUs);
        wattrset(stdscr, attributeOf(shown.state.condition) | (top_ + i == selected_ ? int(A_REVERSE) : 0));
        putRow(kHeaderRows + i, [&shown](const Column &column) {
            return column.screenText != nullptr ? column.screenText(shown) : columnText(column.value(shown));
        });
    }
    wattrset(stdscr, int(A_NORMAL));
}
