#include "host/simulation/file_descriptor.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <system_error>
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

bool StopFlag::open() {
    event_ = FileDescriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    return event_.isOpen();
}

void StopFlag::raise() const {
    ::eventfd_write(event_.get(), 1);  // nobody reads it, so it stays raised
}

std::string systemError(const std::string &what, int errorNumber) {
    // The category's text is strerror's, without its shared buffer.
    return what + ": " + std::generic_category().message(errorNumber);
}

}  // namespace simulation
