// Two lines with a controller that answers every request at once with the same reply: one inside the process, without a
// system call, one over a pseudo-terminal and a thread.
#ifndef DRAVO_BENCH_ANSWERING_LINE_H
#define DRAVO_BENCH_ANSWERING_LINE_H

#include <QtCore/QByteArray>
#include <string>
#include <thread>

/// A file descriptor whose reads, writes and selects never reach the kernel: each write is taken for a request, the
/// reads after it give the reply. One at a time.
class MemoryLine {
public:
    explicit MemoryLine(const QByteArray &reply);
    ~MemoryLine();
    MemoryLine(const MemoryLine &) = delete;
    MemoryLine &operator=(const MemoryLine &) = delete;

    int descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

/// A pseudo-terminal in raw mode; the controller sits on its other side. Keeps the thread that makes it, and the
/// controller, on one processor: between two, waking the other costs more than the exchange, or less, from run to run.
class PtyLine {
public:
    explicit PtyLine(const QByteArray &reply);
    ~PtyLine();
    PtyLine(const PtyLine &) = delete;
    PtyLine &operator=(const PtyLine &) = delete;

    const std::string &path() const { return path_; }

private:
    void answer(const QByteArray &reply) const;

    int controller_;
    unsigned long processors_[16];  // where the thread may run otherwise
    int open_;                      // keeps the terminal alive between two hosts
    std::string path_;
    std::thread thread_;
};

#endif  // DRAVO_BENCH_ANSWERING_LINE_H
