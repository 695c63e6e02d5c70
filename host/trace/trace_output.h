// The file that a trace goes to. Everything is written at once, nothing is buffered, and nobody is waited for: the line
// goes on whatever becomes of the file. Communication thread.
#ifndef DRAVO_HOST_TRACE_TRACE_OUTPUT_H
#define DRAVO_HOST_TRACE_TRACE_OUTPUT_H

#include <QtCore/QByteArray>

#include "host/failure.h"

class TraceOutput {
public:
    TraceOutput() = default;
    TraceOutput(const TraceOutput &) = delete;
    TraceOutput &operator=(const TraceOutput &) = delete;
    ~TraceOutput() { close(); }

    /// Begins the file anew; "-" is standard error. A named pipe needs a reader.
    /// @param head       what each file begins with.
    /// @param mostBytes  of the file, then it gets the name FILE.1, instead of an earlier one, and another begins; 0:
    /// it
    ///                   grows. Of a regular file only.
    Failure open(const QString &file, const QByteArray &head, qint64 mostBytes);
    bool isOpen() const { return descriptor_ >= 0; }

    /// Appends a record, or nothing of it. After a failure the file is closed, and ends with a whole record if it can.
    /// @param leftOut  set: whoever reads, at a terminal or behind a pipe, is too slow.
    Failure append(const QByteArray &record, bool *leftOut);

private:
    Failure create();
    Failure rotate();
    bool isGone() const;
    bool hasRoom() const;
    int writeAll(const QByteArray &bytes);
    Failure failed(int errorNumber);
    void close();

    QString file_;  // without symbolic links
    QByteArray head_;
    qint64 mostBytes_ = 0;
    int descriptor_ = -1;
    bool isRegular_ = false;
    qint64 size_ = 0;
};

#endif  // DRAVO_HOST_TRACE_TRACE_OUTPUT_H
