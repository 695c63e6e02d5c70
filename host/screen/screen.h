// The live screen of the monitor on a terminal. Main thread only; one at a time. The terminal is as it was when the
// object is gone.
#ifndef DRAVO_HOST_SCREEN_SCREEN_H
#define DRAVO_HOST_SCREEN_SCREEN_H

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>

#include "host/screen/monitor_model.h"

struct screen;  // of ncurses

class Screen {
public:
    /// Takes over the terminal; isOpen() tells whether it could be.
    Screen();
    ~Screen();
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    bool isOpen() const { return terminal_ != nullptr; }

    struct Wish {
        enum class Kind { None, Leave, Write } kind = Kind::None;
        int variable = 0;  // Write: its place in the model
        QString values;    // Write: as typed, separated by blanks
    };
    /// Handles the keys pressed since the last call and draws when a redraw is due. Returns at once.
    Wish poll(const MonitorModel &model, qint64 nowUs);

    /// A line below the values, until the next one.
    void say(const QString &message) { message_ = message; }

private:
    Wish handleKey(int key, bool isCharacter, const MonitorModel &model);
    void editKey(int key, bool isCharacter, Wish *wish);
    void select(int row, const MonitorModel &model);
    void draw(const MonitorModel &model, qint64 nowUs);
    void drawValues(const MonitorModel &model, int rows, qint64 nowUs);
    int valueRows() const;

    ::screen *terminal_ = nullptr;
    QElapsedTimer sinceDrawn_;
    bool dirty_ = true;  // a key changed what is shown
    int selected_ = 0;
    int top_ = 0;  // first variable on the screen
    bool editing_ = false;
    QString typed_;
    QString message_;
};

#endif  // DRAVO_HOST_SCREEN_SCREEN_H
