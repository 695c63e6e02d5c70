#include "host/simulation/file_descriptor.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace simulation {

FileDescriptor::~FileDescriptor() {
    if (isOpen()) {
        ::close(number_);
    }
}

FileDescriptor &FileDescriptor::operator=(FileDescriptor &&other) noexcept {
    FileDescriptor old(std::exchange(number_, other.release()));
    return *this;
}

int FileDescriptor::release() {
    return std::exchange(number_, -1);
}

Failure StopFlag::open() {
    event_ = FileDescriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    return event_.isOpen() ? Failure() : Failure::ofSystem("event", errno);
}

void StopFlag::raise() const {
    ::eventfd_write(event_.get(), 1);  // nobody reads it, so it stays raised
}

}  // namespace simulation
