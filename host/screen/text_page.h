// A page of lines that can be scrolled, in place of the variables. Pure; any one thread.
#ifndef DRAVO_HOST_SCREEN_TEXT_PAGE_H
#define DRAVO_HOST_SCREEN_TEXT_PAGE_H

#include <functional>

#include "host/screen/screen_line.h"

class TextPage {
public:
    using Lines = std::function<ScreenLines(int width, qint64 nowUs)>;

    /// lines: called at each drawing, so that they stay up to date.
    TextPage(const QString &title, const Lines &lines) : title_(title), content_(lines) {}

    /// @return whether the user has seen enough.
    bool press(const Key &key);
    ScreenLines lines(const ScreenSize &size, qint64 nowUs);

private:
    QString title_;
    Lines content_;
    int top_ = 0;
    int rows_ = 1;  // of content, on the screen as last drawn
};

#endif  // DRAVO_HOST_SCREEN_TEXT_PAGE_H
