// A file descriptor that closes itself, and a flag to wait for.
#ifndef DRAVO_FILE_DESCRIPTOR_H
#define DRAVO_FILE_DESCRIPTOR_H

#include "host/simulation/failure.h"

namespace simulation {

class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1) : number_(number) {}
    ~FileDescriptor();
    FileDescriptor(FileDescriptor &&other) noexcept : number_(other.release()) {}
    FileDescriptor &operator=(FileDescriptor &&other) noexcept;

    int get() const { return number_; }
    bool isOpen() const { return number_ >= 0; }

private:
    int release();
    int number_;
};

/// A flag that poll() can wait for; raising it wakes every waiter, once and for all.
class StopFlag {
public:
    Failure open();
    void raise() const;
    int descriptor() const { return event_.get(); }

private:
    FileDescriptor event_;
};

}  // namespace simulation

#endif
