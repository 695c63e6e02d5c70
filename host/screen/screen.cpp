#include "host/screen/screen.h"

#include "host/screen/cell_text.h"
#include "host/screen/detail.h"
#include "host/screen/screen_header.h"

namespace {

constexpr int kLeastRows = 8;
constexpr int kTitleRows = 2;
constexpr int kKeyRows = 1;
constexpr int kLeastArea = 4;    // of what is told of the selected variable, below the list
constexpr int kMostArea = 12;    // while the list needs the rows
constexpr int kRowsForGap = 16;  // between list and area
constexpr int kMostNoticeRows = 3;

const char *const kKeyTable[][2] = {
    {"up, down, k, j", "select a variable"},
    {"PageUp, PageDown", "a page of them"},
    {"Home, End", "the first, the last"},
    {"/", "find a label that has the text, in whatever case"},
    {"n, N", "find the next one, the one before"},
    {"Enter", "the selected variable with all its values"},
    {"w", "write it: every value, separated by blanks"},
    {"Tab", "when writing: start from the values that it has"},
    {"Esc", "back; gives up what is typed"},
    {"?", "these keys"},
    {"q, Ctrl-C", "leave; q goes back from a page"},
};

QString keyLine(const QString &keys, const QString &what) {
    return padded(keys, 18) + what;
}

}  // namespace

Screen::Screen(const MonitorModel &model, const QString &lineName)
    : model_(model), lineName_(lineName), layout_(model.variables()), selection_(model.variables().size()) {}

Screen::Wish Screen::press(const Key &key, qint64 nowUs) {
    if (page_) {
        if (page_->press(key)) {
            page_.reset();
        }
        return {};
    }
    if (prompt_) {
        return pressInPrompt(key, nowUs);
    }
    if (search_) {
        pressInSearch(key, nowUs);
        return {};
    }
    return pressInList(key, nowUs);
}

Screen::Wish Screen::pressInList(const Key &key, qint64 nowUs) {
    Wish wish;
    if (key.is('q')) {
        wish.kind = Wish::Kind::Leave;
    } else if (key.is('?')) {
        openKeys();
    } else if (selection_.count() == 0 || selection_.press(key)) {
        return wish;
    } else if (key.is('w')) {
        prompt_.emplace(selectedTag());
    } else if (key.is('/')) {
        search_.emplace();
    } else if (key.is('n')) {
        find(key.text == QLatin1String("N") ? -1 : 1, nowUs);
    } else if (key.kind == Key::Kind::Enter) {
        openDetail();
    } else {
        for (const Page &page : pages_) {
            if (key.is(page.key)) {
                open(page);
                break;
            }
        }
    }
    return wish;
}

Screen::Wish Screen::pressInPrompt(const Key &key, qint64 nowUs) {
    Wish wish;
    if (key.kind == Key::Kind::Tab) {
        prompt_->takeOver(selected(nowUs));
    }
    const TypedLine::Outcome outcome = prompt_->press(key);
    if (outcome == TypedLine::Outcome::Entered) {
        wish = {Wish::Kind::Write, selection_.row(), prompt_->values()};
    }
    if (outcome != TypedLine::Outcome::GoesOn) {
        prompt_.reset();
    }
    return wish;
}

void Screen::pressInSearch(const Key &key, qint64 nowUs) {
    const TypedLine::Outcome outcome = search_->press(key);
    if (outcome == TypedLine::Outcome::Entered) {
        sought_ = search_->text().isEmpty() ? sought_ : search_->text();
        find(1, nowUs);
    }
    if (outcome != TypedLine::Outcome::GoesOn) {
        search_.reset();
    }
}

void Screen::find(int step, qint64 nowUs) {
    if (sought_.isEmpty()) {
        say(QStringLiteral("nothing to find: / asks for it"), Tone::Plain, nowUs);
    } else if (!selection_.find(model_.variables(), sought_, step)) {
        say(QStringLiteral("no label has '%1'").arg(sought_), Tone::Warning, nowUs);
    }
}

void Screen::open(const Page &page) {
    page_.emplace(page.name + QStringLiteral("  ") + lineName_,
                  [page, variable = selectedTag()](int width, qint64 nowUs) {
                      ScreenLines lines;
                      for (const QString &line : page.lines(variable, width, nowUs)) {
                          lines += line.isEmpty() ? ScreenLines(1) : wrappedLines(line, width);
                      }
                      return lines;
                  });
}

void Screen::openDetail() {
    page_.emplace(QStringLiteral("%1 of %2").arg(selection_.row() + 1).arg(selection_.count()),
                  [this](int width, qint64 nowUs) { return detailLines(selected(nowUs), width); });
}

void Screen::openKeys() {
    page_.emplace(QStringLiteral("keys"), [this](int width, qint64) {
        ScreenLines lines;
        for (const auto &row : kKeyTable) {
            lines += wrappedLines(keyLine(QLatin1String(row[0]), QLatin1String(row[1])), width);
        }
        for (const Page &page : pages_) {
            lines += wrappedLines(keyLine(QString(QLatin1Char(page.key)), page.name), width);
        }
        return lines;
    });
}

ScreenLines Screen::lines(const ScreenSize &size, qint64 nowUs) {
    if (size.rows < kLeastRows || size.columns < RowLayout::kLeastWidth) {
        const QString needed = QStringLiteral("terminal too small: %1x%2 at least");
        return {ScreenLine(fitted(needed.arg(RowLayout::kLeastWidth).arg(kLeastRows), size.columns))};
    }
    return page_ ? page_->lines(size, nowUs) : listLines(size, nowUs);
}

ScreenLines Screen::listLines(const ScreenSize &size, qint64 nowUs) {
    const int gap = size.rows >= kRowsForGap ? 1 : 0;
    const int leastArea = qBound(kLeastArea, size.rows / 4, kMostArea);
    const int rows = qMin(selection_.count(), size.rows - kTitleRows - gap - leastArea - kKeyRows);
    const int area = size.rows - kTitleRows - rows - gap - kKeyRows;
    selection_.show(rows);
    ScreenLines lines{headerLine(model_, lineName_, selection_.row(), size.columns, nowUs),
                      layout_.titles(size.columns)};
    for (int row = selection_.top(); row < selection_.top() + rows; ++row) {
        ScreenLine line = layout_.row(model_.shown(model_.variables().at(row), nowUs), size.columns);
        line.reversed = row == selection_.row();
        lines.append(line);
    }
    lines.resize(kTitleRows + rows + gap);
    lines += areaLines(area, size.columns, nowUs);
    lines.resize(size.rows - kKeyRows);
    lines.append(ScreenLine(fitted(keyWords(), size.columns)));
    return lines;
}

ScreenLines Screen::areaLines(int rows, int width, qint64 nowUs) const {
    if (selection_.count() == 0) {
        return {};
    }
    const ShownVariable variable = selected(nowUs);
    if (prompt_) {
        return prompt_->lines(variable, rows, width);
    }
    ScreenLines told =
        search_ ? ScreenLines{ScreenLine(fittedEnd(QLatin1Char('/') + search_->text() + QLatin1Char('_'), width))}
                : firstLines(wrappedLines(notice_.text(nowUs), width, notice_.tone(nowUs)), kMostNoticeRows, width);
    ScreenLines lines = firstLines(detailLines(variable, width), rows - told.size(), width);
    lines.resize(rows - told.size());
    return lines + told;
}

QString Screen::keyWords() const {
    if (prompt_) {
        return QStringLiteral("Enter writes   Tab takes over the values   Esc gives up");
    }
    if (search_) {
        return QStringLiteral("Enter finds   Esc gives up");
    }
    QString words = QStringLiteral("Enter all of it   w write   / find");
    for (const Page &page : pages_) {
        words += QStringLiteral("   %1 %2").arg(QLatin1Char(page.key)).arg(page.name);
    }
    return words + QStringLiteral("   ? keys   q leave");
}
