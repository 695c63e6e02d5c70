// One controller: a Modbus RTU server on its own pseudo-terminal, in its own thread. The relay calls exchange() from
// one thread; memory() may be used from any.
#ifndef DRAVO_CONTROLLER_H
#define DRAVO_CONTROLLER_H

#include <modbus.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "host/simulation/controller_memory.h"
#include "host/simulation/pseudo_terminal.h"

namespace simulation {

class Controller {
public:
    static Failure start(int station, bool moving, std::unique_ptr<Controller> *controller);
    ~Controller();
    Controller(const Controller &) = delete;
    Controller &operator=(const Controller &) = delete;

    int station() const { return station_; }
    ControllerMemory &memory() { return memory_; }
    const ControllerMemory &memory() const { return memory_; }

    /// Has a whole request for this station carried out. @return the reply; empty when there is none, also when stop
    /// was raised meanwhile.
    Bytes exchange(const Bytes &request, const StopFlag &stop);
    /// Has a broadcast carried out; returns when that is done.
    void broadcast(const Bytes &request);

private:
    using Server = std::unique_ptr<modbus_t, decltype(&modbus_free)>;
    Controller(int station, PseudoTerminal terminal, Server server);
    void serve(bool moving);
    void answerOne();

    const int station_;
    ControllerMemory memory_;
    PseudoTerminal terminal_;
    StopFlag stop_;
    Server server_;  // its own thread only, once that runs

    std::mutex servedMutex_;
    std::condition_variable servedChanged_;
    unsigned served_ = 0;      // servedMutex_; requests carried out or refused
    unsigned handedOver_ = 0;  // relay's thread only; requests given to the server

    std::thread thread_;
};

}  // namespace simulation

#endif
