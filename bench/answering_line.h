// Lines with a controller that answers every request at once with the same reply: inside the process without a system
// call, over a pair of sockets, over a pseudo-terminal.
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

/// A controller in a thread of its own, and the thread that makes the line, on one processor while the line exists:
/// between two, waking the other costs more than the exchange, or less, from run to run. Each line takes the next one.
class ThreadLine {
public:
    ThreadLine(const ThreadLine &) = delete;
    ThreadLine &operator=(const ThreadLine &) = delete;

protected:
    ThreadLine();
    ~ThreadLine();

    void start(int controller, const QByteArray &reply);
    void finish();  // once the host's side is closed

private:
    unsigned long processors_[16];  // where the thread may run otherwise
    int controller_ = -1;
    std::thread thread_;
};

/// A pair of sockets: nothing but the calls of the host and the change to the controller and back.
class SocketLine : ThreadLine {
public:
    explicit SocketLine(const QByteArray &reply);
    ~SocketLine();

    int descriptor() const { return host_; }  // gives up a read after a second

private:
    int host_;
};

/// A pseudo-terminal in raw mode. A worker of the kernel passes its bytes on, from whichever processor.
class PtyLine : ThreadLine {
public:
    explicit PtyLine(const QByteArray &reply);
    ~PtyLine();

    const std::string &path() const { return path_; }

private:
    int open_;  // keeps the terminal alive between two hosts
    std::string path_;
};

#endif  // DRAVO_BENCH_ANSWERING_LINE_H
