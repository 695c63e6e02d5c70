// The terminal: keys in, lines out. It is as it was when the object is gone. Main thread only; one at a time.
#ifndef DRAVO_HOST_SCREEN_TERMINAL_H
#define DRAVO_HOST_SCREEN_TERMINAL_H

#include "host/screen/screen_line.h"

struct screen;  // of ncurses

class Terminal {
public:
    /// Takes over the terminal; isOpen() tells whether it could be.
    Terminal();
    ~Terminal();
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    bool isOpen() const { return terminal_ != nullptr; }
    /// As it is now; a change comes with a key of kind Other.
    ScreenSize size() const;
    /// The oldest key that was pressed. @return false: none was. Does not wait.
    bool takeKey(Key *key);
    /// Replaces what is on it. Lines beyond its size are left out.
    void paint(const ScreenLines &lines);

private:
    ::screen *terminal_ = nullptr;
    bool coloured_ = false;
};

#endif  // DRAVO_HOST_SCREEN_TERMINAL_H
