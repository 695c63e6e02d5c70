#include "answering_line.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace {

const int kRequestBytes = 8;  // of every read

int memoryDescriptor = -1;
QByteArray memoryReply;
int memoryRead = 0;  // bytes of the reply that are gone

int checked(int result, const char *what) {
    if (result < 0) {
        throw std::runtime_error(what);
    }
    return result;
}

// One of the set after the other with each call.
size_t nextProcessor(const cpu_set_t &set) {
    static size_t processor = 0;
    do {
        processor = (processor + 1) % CPU_SETSIZE;
    } while (!CPU_ISSET(processor, &set));
    return processor;
}

// The thread of a controller; ends when the other side is closed.
void answer(int controller, const QByteArray &reply) {
    char request[256];
    ssize_t missing = kRequestBytes;
    for (;;) {
        const ssize_t got = read(controller, request, sizeof request);
        if (got <= 0) {
            return;
        }
        missing -= got;
        if (missing <= 0) {
            missing = kRequestBytes;
            if (write(controller, reply.constData(), size_t(reply.size())) != reply.size()) {
                return;
            }
        }
    }
}

}  // namespace

MemoryLine::MemoryLine(const QByteArray &reply) : descriptor_(checked(open("/dev/null", O_RDWR), "/dev/null")) {
    memoryDescriptor = descriptor_;
    memoryReply = reply;
    memoryRead = reply.size();
}

MemoryLine::~MemoryLine() {
    memoryDescriptor = -1;
    close(descriptor_);
}

// The program's own calls and those of the libraries that it is linked with arrive here.
extern "C" {

ssize_t write(int descriptor, const void *bytes, size_t size) {
    if (descriptor != memoryDescriptor) {
        return syscall(SYS_write, descriptor, bytes, size);
    }
    memoryRead = 0;
    return ssize_t(size);
}

ssize_t read(int descriptor, void *bytes, size_t size) {
    if (descriptor != memoryDescriptor) {
        return syscall(SYS_read, descriptor, bytes, size);
    }
    const int given = std::min(int(size), memoryReply.size() - memoryRead);
    std::memcpy(bytes, memoryReply.constData() + memoryRead, size_t(given));
    memoryRead += given;
    return given;
}

int select(int count, fd_set *reads, fd_set *writes, fd_set *exceptions, timeval *timeout) {
    if (memoryDescriptor >= 0 && reads && FD_ISSET(memoryDescriptor, reads)) {
        return 1;
    }
    return int(syscall(SYS_select, count, reads, writes, exceptions, timeout));
}

}  // extern "C"

ThreadLine::ThreadLine() {
    checked(sched_getaffinity(0, sizeof processors_, reinterpret_cast<cpu_set_t *>(processors_)), "processors");
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(nextProcessor(*reinterpret_cast<cpu_set_t *>(processors_)), &one);
    checked(sched_setaffinity(0, sizeof one, &one), "one processor");  // new threads stay there, too
}

ThreadLine::~ThreadLine() {
    sched_setaffinity(0, sizeof processors_, reinterpret_cast<cpu_set_t *>(processors_));
}

void ThreadLine::start(int controller, const QByteArray &reply) {
    controller_ = controller;
    thread_ = std::thread(answer, controller, reply);
}

void ThreadLine::finish() {
    thread_.join();
    close(controller_);
}

SocketLine::SocketLine(const QByteArray &reply) {
    int sides[2];
    checked(socketpair(AF_UNIX, SOCK_STREAM, 0, sides), "sockets");
    host_ = sides[0];
    const timeval second = {1, 0};
    checked(setsockopt(host_, SOL_SOCKET, SO_RCVTIMEO, &second, sizeof second), "timeout of a socket");
    start(sides[1], reply);
}

SocketLine::~SocketLine() {
    close(host_);
    finish();
}

PtyLine::PtyLine(const QByteArray &reply) {
    const int controller = checked(posix_openpt(O_RDWR | O_NOCTTY), "no pseudo-terminal");
    checked(grantpt(controller), "grantpt");
    checked(unlockpt(controller), "unlockpt");
    path_ = ptsname(controller);
    open_ = checked(open(path_.c_str(), O_RDWR | O_NOCTTY), "pseudo-terminal");
    termios settings;
    checked(tcgetattr(open_, &settings), "tcgetattr");
    cfmakeraw(&settings);
    checked(tcsetattr(open_, TCSANOW, &settings), "tcsetattr");
    start(controller, reply);
}

PtyLine::~PtyLine() {
    close(open_);
    finish();
}
