// Which variable is selected, and which are in sight. Pure; any one thread.
#ifndef DRAVO_HOST_SCREEN_SELECTION_H
#define DRAVO_HOST_SCREEN_SELECTION_H

#include "host/screen/screen_line.h"
#include "host/tags/tag_list.h"

class Selection {
public:
    explicit Selection(int count) : count_(count) {}

    int row() const { return row_; }
    int top() const { return top_; }
    int count() const { return count_; }
    /// @return whether the key was one that moves.
    bool press(const Key &key);
    /// Selects the next label with the text, whatever its case, after the selected one and round at the end.
    /// @param step  1, or -1: the one before. @return false: no label has it.
    bool find(const QVector<Tag> &variables, const QString &text, int step);
    /// So many rows are in sight, the selected one among them.
    void show(int rows);

private:
    int count_;
    int row_ = 0;
    int top_ = 0;
    int rows_ = 1;
};

#endif  // DRAVO_HOST_SCREEN_SELECTION_H
