// How far a long run is, on standard error: one line that is rewritten on a terminal, and lines that stay. Main thread.
#ifndef DRAVO_HOST_SCAN_PROGRESS_H
#define DRAVO_HOST_SCAN_PROGRESS_H

#include <QtCore/QString>

class Progress {
public:
    Progress();
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    bool onTerminal() const { return terminal_; }
    /// Replaces the line, 79 characters of it. Does nothing elsewhere.
    void show(const QString &text);
    /// Takes the line away, for text that stays.
    void clear();

private:
    bool terminal_;
    QString shown_;
};

#endif  // DRAVO_HOST_SCAN_PROGRESS_H
