// The same read of registers, made by hosts of different libraries on the same line.
#ifndef DRAVO_BENCH_HOSTS_H
#define DRAVO_BENCH_HOSTS_H

#include <memory>
#include <string>

/// Reads some registers from address 0 of station 1 and has their values at hand afterwards.
class Host {
public:
    virtual ~Host() = default;
    Host() = default;
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /// False: no good reply came.
    virtual bool exchange() = 0;
};

/// The driver with the reply passed from memory, or with a host's loop around a descriptor, which gives up a read after
/// a while, or around a terminal.
std::unique_ptr<Host> driverHost(int registers);
std::unique_ptr<Host> driverHost(int registers, int descriptor);
std::unique_ptr<Host> driverHost(int registers, const std::string &path);

/// libmodbus on a descriptor, or on a terminal.
std::unique_ptr<Host> libmodbusHost(int registers, int descriptor);
std::unique_ptr<Host> libmodbusHost(int registers, const std::string &path);

/// QtSerialBus on a terminal. Needs a QCoreApplication.
std::unique_ptr<Host> qtSerialBusHost(int registers, const std::string &path);

#endif  // DRAVO_BENCH_HOSTS_H
