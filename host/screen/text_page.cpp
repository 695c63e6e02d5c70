#include "host/screen/text_page.h"

#include <limits>

#include "host/screen/cell_text.h"

bool TextPage::press(const Key &key) {
    switch (key.kind) {
        case Key::Kind::Up:
        case Key::Kind::Down:
            top_ += key.kind == Key::Kind::Down ? 1 : -1;
            break;
        case Key::Kind::PageUp:
        case Key::Kind::PageDown:
            top_ += key.kind == Key::Kind::PageDown ? rows_ : -rows_;
            break;
        case Key::Kind::Home:
            top_ = 0;
            break;
        case Key::Kind::End:
            top_ = std::numeric_limits<int>::max() / 2;
            break;
        default:
            break;
    }
    top_ = qMax(top_, 0);
    return key.is('q') || key.kind == Key::Kind::Escape || key.kind == Key::Kind::Enter;
}

ScreenLines TextPage::lines(const ScreenSize &size, qint64 nowUs) {
    const ScreenLines content = content_(size.columns, nowUs);
    rows_ = qMax(size.rows - 2, 1);
    top_ = qBound(0, top_, qMax(content.size() - rows_, 0));
    const QString place = content.size() <= rows_ ? QString()
                                                  : QStringLiteral("  lines %1 to %2 of %3")
                                                        .arg(top_ + 1)
                                                        .arg(qMin(top_ + rows_, content.size()))
                                                        .arg(content.size());
    ScreenLine head(padded(fitted(title_, size.columns - cellsOf(place)) + place, size.columns), Tone::Strong);
    head.underlined = true;
    ScreenLines lines{head};
    lines += content.mid(top_, rows_);
    lines.resize(rows_ + 1);
    lines.append(ScreenLine(fitted(QStringLiteral("arrows, PageUp, PageDown scroll   Esc back"), size.columns)));
    return lines;
}
