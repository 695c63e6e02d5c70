#include "host/screen/selection.h"

bool Selection::press(const Key &key) {
    qint64 to = row_;
    if (key.kind == Key::Kind::Up || key.is('k')) {
        to -= 1;
    } else if (key.kind == Key::Kind::Down || key.is('j')) {
        to += 1;
    } else if (key.kind == Key::Kind::PageUp) {
        to -= rows_;
    } else if (key.kind == Key::Kind::PageDown) {
        to += rows_;
    } else if (key.kind == Key::Kind::Home) {
        to = 0;
    } else if (key.kind == Key::Kind::End) {
        to = count_ - 1;
    } else {
        return false;
    }
    row_ = int(qBound<qint64>(0, to, qMax(count_ - 1, 0)));
    return true;
}

bool Selection::find(const QVector<Tag> &variables, const QString &text, int step) {
    for (int away = 1; away <= count_; ++away) {
        const int row = int((row_ + qint64(step) * away + count_) % count_);
        if (variables.at(row).label.contains(text, Qt::CaseInsensitive)) {
            row_ = row;
            return true;
        }
    }
    return false;
}

void Selection::show(int rows) {
    rows_ = qMax(rows, 1);
    top_ = qBound(qMax(row_ - rows_ + 1, 0), top_, row_);
    top_ = qMin(top_, qMax(count_ - rows_, 0));
}
