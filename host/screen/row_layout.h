// The list of variables on the live screen: one line each, in columns that fit any width. Pure; any thread.
#ifndef DRAVO_HOST_SCREEN_ROW_LAYOUT_H
#define DRAVO_HOST_SCREEN_ROW_LAYOUT_H

#include "host/screen/columns.h"
#include "host/screen/screen_line.h"

/// State in a word, with the result code where that says more: "failing 24".
QString stateWords(const dravo::ValueState &state);
/// How a state is coloured.
Tone toneOf(dravo::Condition condition);
/// "42 ms", "17 s", "180 min"; "-": never read.
QString ageWords(qint64 ageUs);

class RowLayout {
public:
    /// Narrower screens show nothing.
    static constexpr int kLeastWidth = 40;

    explicit RowLayout(const QVector<Tag> &variables);

    ScreenLine titles(int width) const;
    /// As wide as the screen. Numbers are shown whole or, with what follows them, as the mark; only one that is wider
    /// than its column ends in it.
    ScreenLine row(const ShownVariable &shown, int width) const;

private:
    QVector<int> widths(int width) const;

    int longestLabel_ = 0;
    int longestAddress_ = 0;
};

#endif  // DRAVO_HOST_SCREEN_ROW_LAYOUT_H
