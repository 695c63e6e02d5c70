#include "host/plan/aligned_lines.h"

namespace {

constexpr int kWidth = 80;
constexpr int kLeastForLast = 12;

QVector<int> columnWidths(const QVector<QVector<Cell>> &lines) {
    QVector<int> widths(lines.first().size(), 0);
    int used = 0;
    for (int column = 0; column + 1 < widths.size(); ++column) {
        for (const QVector<Cell> &line : lines) {
            widths[column] = qMax(widths.at(column), line.at(column).text.size());
        }
        used += widths.at(column) + 1;
    }
    widths.last() = qMax(kLeastForLast, kWidth - used);
    return widths;
}

QString justified(const Cell &cell, int width) {
    const QString text = cell.text.size() > width ? cell.text.left(width - 1) + QChar(0x2026) : cell.text;
    return cell.isNumber ? text.rightJustified(width) : text.leftJustified(width);
}

}  // namespace

QString aligned(const QVector<QVector<Cell>> &lines) {
    const QVector<int> widths = columnWidths(lines);
    QString text;
    for (const QVector<Cell> &line : lines) {
        QString row;
        for (int column = 0; column < widths.size(); ++column) {
            row += justified(line.at(column), widths.at(column)) + QLatin1Char(' ');
        }
        while (row.endsWith(QLatin1Char(' '))) {
            row.chop(1);
        }
        text += row + QLatin1Char('\n');
    }
    return text;
}
