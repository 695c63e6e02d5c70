// A line that the user types. Pure; any one thread.
#ifndef DRAVO_HOST_SCREEN_TYPED_LINE_H
#define DRAVO_HOST_SCREEN_TYPED_LINE_H

#include "host/screen/screen_line.h"

class TypedLine {
public:
    enum class Outcome { GoesOn, Entered, GivenUp };

    Outcome press(const Key &key) {
        if (key.kind == Key::Kind::Backspace) {
            text_.chop(!text_.isEmpty() && text_.at(text_.size() - 1).isLowSurrogate() ? 2 : 1);
        } else if (key.kind == Key::Kind::Character && text_.size() < kLongest) {
            text_ += key.text;
        }
        return key.kind == Key::Kind::Enter    ? Outcome::Entered
               : key.kind == Key::Kind::Escape ? Outcome::GivenUp
                                               : Outcome::GoesOn;
    }
    const QString &text() const { return text_; }
    void setText(const QString &text) { text_ = text.left(kLongest); }

private:
    static constexpr int kLongest = 80000;  // of the values of the largest variable, in binary
    QString text_;
};

#endif  // DRAVO_HOST_SCREEN_TYPED_LINE_H
