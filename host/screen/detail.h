// All that is told of one variable, whole. Pure; any thread.
#ifndef DRAVO_HOST_SCREEN_DETAIL_H
#define DRAVO_HOST_SCREEN_DETAIL_H

#include "host/screen/columns.h"
#include "host/screen/screen_line.h"

/// Label, place and state, what is wrong, and every value.
ScreenLines detailLines(const ShownVariable &shown, int width);
/// "type 7, address 200, station 3, 4 values".
QString placeWords(const dravo::Variable &variable);

/// Text in as many lines as it takes.
ScreenLines wrappedLines(const QString &text, int width, Tone tone = Tone::Plain);
/// The first of the lines; where there are more, the last one says how to see them.
ScreenLines firstLines(const ScreenLines &lines, int rows, int width);

#endif  // DRAVO_HOST_SCREEN_DETAIL_H
