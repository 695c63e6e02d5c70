#include "host/screen/terminal.h"

#define NCURSES_NOMACROS 1
#include <curses.h>
#undef OK  // a macro, not needed, of a common name

#include "host/screen/cell_text.h"

namespace {

constexpr int kEscapeMs = 50;
constexpr wint_t kEscape = 27;
constexpr wint_t kRubout = 127;

struct ToneLook {
    short colour;  // below 0: the terminal's own
    attr_t attributes;
};
/// In the order of Tone. The attributes tell the tones apart where there are no colours.
const ToneLook kLooks[] = {
    {-1, A_NORMAL}, {-1, A_BOLD}, {COLOR_GREEN, A_NORMAL}, {COLOR_YELLOW, A_NORMAL}, {COLOR_RED, A_BOLD}, {-1, A_DIM},
};

short pairOf(Tone tone) {
    return short(int(tone) + 1);
}

Key characterKey(wint_t character) {
    if (character == '\r' || character == '\n') {
        return {Key::Kind::Enter, QString()};
    }
    if (character == '\b' || character == kRubout) {
        return {Key::Kind::Backspace, QString()};
    }
    if (character == '\t' || character == kEscape) {
        return {character == '\t' ? Key::Kind::Tab : Key::Kind::Escape, QString()};
    }
    const wchar_t typed = wchar_t(character);
    return character < ' ' ? Key() : Key{Key::Kind::Character, QString::fromWCharArray(&typed, 1)};
}

Key functionKey(wint_t code) {
    using Kind = Key::Kind;
    static const struct {
        wint_t code;
        Kind kind;
    } kKeys[] = {{KEY_UP, Kind::Up},          {KEY_DOWN, Kind::Down},          {KEY_PPAGE, Kind::PageUp},
                 {KEY_NPAGE, Kind::PageDown}, {KEY_HOME, Kind::Home},          {KEY_END, Kind::End},
                 {KEY_ENTER, Kind::Enter},    {KEY_BACKSPACE, Kind::Backspace}};
    for (const auto &known : kKeys) {
        if (known.code == code) {
            return {known.kind, QString()};
        }
    }
    return {};
}

}  // namespace

Terminal::Terminal() {
    terminal_ = newterm(nullptr, stdout, stdin);
    if (!isOpen()) {
        return;
    }
    cbreak();  // keeps Ctrl-C a signal
    noecho();
    nonl();
    keypad(stdscr, true);
    nodelay(stdscr, true);
    set_escdelay(kEscapeMs);
    curs_set(0);
    coloured_ = has_colors() && start_color() != ERR && use_default_colors() != ERR;
    for (int tone = 0; coloured_ && tone < int(sizeof kLooks / sizeof kLooks[0]); ++tone) {
        init_pair(pairOf(Tone(tone)), kLooks[tone].colour, -1);
    }
}

Terminal::~Terminal() {
    if (isOpen()) {
        endwin();
        delscreen(terminal_);
    }
}

ScreenSize Terminal::size() const {
    return {getmaxy(stdscr), getmaxx(stdscr)};
}

bool Terminal::takeKey(Key *key) {
    wint_t code = 0;
    const int kind = get_wch(&code);
    if (kind != ERR) {
        *key = kind == KEY_CODE_YES ? functionKey(code) : characterKey(code);
    }
    return kind != ERR;
}

void Terminal::paint(const ScreenLines &lines) {
    const ScreenSize room = size();
    werase(stdscr);
    for (int row = 0; row < qMin(lines.size(), room.rows); ++row) {
        const ScreenLine &line = lines.at(row);
        const attr_t ofLine = (line.reversed ? A_REVERSE : A_NORMAL) | (line.underlined ? A_UNDERLINE : A_NORMAL);
        wmove(stdscr, row, 0);
        int left = room.columns;
        for (const Span &span : line.spans) {
            const QString text = fitted(span.text, left);
            const std::wstring shown = text.toStdWString();
            wattr_set(stdscr, kLooks[int(span.tone)].attributes | ofLine, coloured_ ? pairOf(span.tone) : short(0),
                      nullptr);
            waddnwstr(stdscr, shown.c_str(), int(shown.size()));
            left -= cellsOf(text);
        }
    }
    wattr_set(stdscr, A_NORMAL, 0, nullptr);
    wrefresh(stdscr);
}
