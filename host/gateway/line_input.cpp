#include "host/gateway/line_input.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QFile>
#include <cerrno>

namespace {
constexpr int kPortion = 64 * 1024;
}

LineInput::~LineInput() {
    if (descriptor_ > STDIN_FILENO) {
        close(descriptor_);
    }
}

Failure LineInput::open(const QString &fileName) {
    if (fileName == QLatin1String("-")) {
        descriptor_ = STDIN_FILENO;
        return Failure();
    }
    const QString what = QStringLiteral("cannot read commands from %1").arg(fileName);
    const QByteArray name = QFile::encodeName(fileName);
    struct stat facts {};
    if (stat(name.constData(), &facts) != 0) {
        return Failure::ofSystem(what, errno);
    }
    if (S_ISDIR(facts.st_mode)) {
        return Failure::ofSystem(what, EISDIR);
    }
    // While this program could write to the pipe itself, the end of its last writer is not the pipe's.
    const int mode = S_ISFIFO(facts.st_mode) ? O_RDWR : O_RDONLY;
    descriptor_ = ::open(name.constData(), mode | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    return isOpen() ? Failure() : Failure::ofSystem(what, errno);
}

// One portion at most, so that an input that never runs dry does not keep the line waiting.
LineInput::Taken LineInput::take(QByteArray *line) {
    const Taken taken = fromBuffer(line);
    return taken == Taken::None && readSome() ? fromBuffer(line) : taken;
}

LineInput::Taken LineInput::fromBuffer(QByteArray *line) {
    int end = buffer_.indexOf('\n', start_);
    if (dropping_ && end >= 0) {
        dropping_ = false;
        start_ = end + 1;
        end = buffer_.indexOf('\n', start_);
    }
    if (dropping_ || start_ == buffer_.size()) {
        buffer_.clear();
        start_ = 0;
        return ended_ ? Taken::Ended : Taken::None;
    }
    const int size = (end < 0 ? buffer_.size() : end) - start_;
    if (size > kLongest) {
        dropping_ = end < 0;
        start_ = end < 0 ? buffer_.size() : end + 1;
        return Taken::TooLong;
    }
    if (end < 0 && !ended_) {
        return Taken::None;
    }
    *line = buffer_.mid(start_, size);
    start_ += end < 0 ? size : size + 1;
    return Taken::Line;
}

// Whether anything changed. Standard input stays as it is, since others may share it: it is read once it has something.
bool LineInput::readSome() {
    pollfd input{descriptor_, POLLIN, 0};
    if (ended_ || poll(&input, 1, 0) <= 0) {
        return false;
    }
    QByteArray portion(kPortion, Qt::Uninitialized);
    const ssize_t size = read(descriptor_, portion.data(), size_t(portion.size()));
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) {
        return false;
    }
    ended_ = size <= 0;
    buffer_.remove(0, start_);
    buffer_.append(portion.constData(), int(qMax<ssize_t>(size, 0)));
    start_ = 0;
    return true;
}
