#include "host/trace/trace_output.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <cerrno>

namespace {
constexpr int kRestMs = 200;  // for a reader to take the rest of a record that it has begun
constexpr mode_t kMode = 0666;
}  // namespace

Failure TraceOutput::open(const QString &file, const QByteArray &head, qint64 mostBytes) {
    head_ = head;
    mostBytes_ = mostBytes;
    file_ = file;
    if (file == QLatin1String("-")) {
        descriptor_ = STDERR_FILENO;
    } else if (Failure failure = create()) {
        return failure;
    }
    if (mostBytes_ > 0 && !isRegular_) {
        close();
        return Failure(
            QStringLiteral("the trace %1 is no regular file, so --trace-size does not go with it").arg(file));
    }
    file_ = isRegular_ ? QFileInfo(file).canonicalFilePath() : file;
    bool leftOut = false;
    return append(head_, &leftOut);
}

Failure TraceOutput::create() {
    // Without O_NONBLOCK a named pipe would be waited for, here and with every record.
    const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    descriptor_ = ::open(QFile::encodeName(file_).constData(), flags, kMode);
    struct stat status {};
    if (descriptor_ < 0 || fstat(descriptor_, &status) != 0) {
        const int reason = errno;
        close();
        return reason == ENXIO ? Failure(QStringLiteral("cannot open the trace %1: nobody reads it").arg(file_))
                               : Failure::ofSystem(QStringLiteral("cannot open the trace %1").arg(file_), reason);
    }
    isRegular_ = S_ISREG(status.st_mode);
    size_ = 0;
    return Failure();
}

Failure TraceOutput::append(const QByteArray &record, bool *leftOut) {
    *leftOut = !isRegular_ && !hasRoom();
    if (*leftOut) {
        return Failure();
    }
    if (isRegular_ && isGone()) {
        return failed(ENOENT);
    }
    if (mostBytes_ > 0 && size_ > head_.size() && size_ + record.size() > mostBytes_) {
        if (Failure failure = rotate()) {
            return failure;
        }
    }
    const int reason = writeAll(record);
    if (reason != 0) {
        return failed(reason);
    }
    size_ += record.size();
    return Failure();
}

Failure TraceOutput::rotate() {
    const QByteArray name = QFile::encodeName(file_);
    if (::rename(name.constData(), (name + ".1").constData()) != 0) {
        return failed(errno);
    }
    close();
    if (Failure failure = create()) {
        return failure;
    }
    const int reason = writeAll(head_);
    size_ = head_.size();
    return reason != 0 ? failed(reason) : Failure();
}

bool TraceOutput::isGone() const {
    struct stat status {};
    return fstat(descriptor_, &status) == 0 && status.st_nlink == 0;
}

/// Whether a record can be written without waiting: a pipe says so when 4,096 bytes fit.
bool TraceOutput::hasRoom() const {
    pollfd out{descriptor_, POLLOUT, 0};
    return poll(&out, 1, 0) != 0;  // errors are the write's to tell
}

/// @return the system's error number; 0: written.
int TraceOutput::writeAll(const QByteArray &bytes) {
    int done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::write(descriptor_, bytes.constData() + done, size_t(bytes.size() - done));
        if (written > 0) {
            done += int(written);
            continue;
        }
        const int reason = errno;
        pollfd out{descriptor_, POLLOUT, 0};
        const bool goesOn = reason == EINTR || (reason == EAGAIN && poll(&out, 1, kRestMs) == 1);
        if (!goesOn) {
            return reason;
        }
    }
    return 0;
}

Failure TraceOutput::failed(int errorNumber) {
    if (isRegular_ && ftruncate(descriptor_, size_) != 0) {
        // the last record stays in part
    }
    close();
    return Failure::ofSystem(QStringLiteral("the trace ends, cannot write %1").arg(file_), errorNumber);
}

void TraceOutput::close() {
    if (descriptor_ > STDERR_FILENO) {
        ::close(descriptor_);
    }
    descriptor_ = -1;
}
