// Columns of text for a terminal of 80 columns. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_ALIGNED_LINES_H
#define DRAVO_HOST_PLAN_ALIGNED_LINES_H

#include <QtCore/QString>
#include <QtCore/QVector>

struct Cell {
    QString text;
    bool isNumber;  // stands to the right
};

/// Each column is as wide as its widest cell; the last takes what is left, and ends in an ellipsis where that is too
/// little. lines: at least one, all of as many cells.
QString aligned(const QVector<QVector<Cell>> &lines);

#endif  // DRAVO_HOST_PLAN_ALIGNED_LINES_H
