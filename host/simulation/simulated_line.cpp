#include "host/simulation/simulated_line.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <utility>

#include "host/simulation/option_check.h"
#include "host/simulation/quiet_thread.h"
#include "host/simulation/relay.h"

using namespace simulation;

namespace {

// A machine without real-time threads needs longer than the characters alone to tell a silence from a pause. Whole
// requests are known by their CRC and do not wait for it.
constexpr std::chrono::milliseconds kShortestSilence{5};

LineRules lineRules(const SimulatedLineOptions &options) {
    return {characterTime(options),
            std::max<Clock::duration>(frameGap(options), kShortestSilence),
            options.remoteNode >= 0,
            options.echo,
            options.baud,
            options.parity,
            options.anySettings};
}

}  // namespace

// In the order of construction: the relay stops before the controllers it talks to.
struct SimulatedLine::Parts {
    Parts(const SimulatedLineOptions &options, Controllers started, std::array<MasterPort, 2> devices)
        : controllers(std::move(started)),
          ports(std::move(devices)),
          faults(options.faults, options.seed),
          relay(options, controllers, faults, stop, ports) {}
    ~Parts() {
        if (thread.joinable()) {
            stop.raise();
            thread.join();
        }
    }
    Parts(const Parts &) = delete;
    Parts &operator=(const Parts &) = delete;

    ControllerMemory *memoryOf(int station) {
        const auto controller = controllers.find(station);
        return controller != controllers.end() ? &controller->second->memory() : nullptr;
    }

    Controllers controllers;
    std::array<MasterPort, 2> ports;  // the relay's thread only, but for their paths, which never change
    LineFaults faults;
    StopFlag stop;
    Relay relay;
    std::thread thread;
};

Failure SimulatedLine::start(const SimulatedLineOptions &options, std::unique_ptr<SimulatedLine> *line) {
    if (Failure failure = checkOptions(options)) {
        return failure;
    }
    Controllers controllers;
    for (const int station : options.stations) {
        if (Failure failure = Controller::start(station, options.moving, &controllers[station])) {
            return failure;
        }
    }
    for (const ForbiddenRange &range : options.forbidden) {
        controllers[range.station]->memory().forbidden.emplace_back(range.first, range.last);
    }
    const LineRules rules = lineRules(options);
    std::optional<PseudoTerminal> first;
    std::optional<PseudoTerminal> second;
    for (std::optional<PseudoTerminal> *terminal : {&first, &second}) {
        if (Failure failure = PseudoTerminal::open(terminal)) {
            return failure;
        }
    }
    auto parts = std::make_unique<Parts>(
        options, std::move(controllers),
        std::array<MasterPort, 2>{MasterPort(std::move(*first), rules), MasterPort(std::move(*second), rules)});
    if (Failure failure = parts->stop.open()) {
        return failure;
    }
    try {
        parts->thread = startThread([relay = &parts->relay] { relay->run(); });
    } catch (const std::system_error &failure) {
        return Failure::ofSystem("relay", failure.code().value());
    }
    line->reset(new SimulatedLine(std::move(parts)));
    return Failure();
}

SimulatedLine::SimulatedLine(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

SimulatedLine::~SimulatedLine() = default;

const std::string &SimulatedLine::device() const {
    return parts_->ports[0].path();
}

const std::string &SimulatedLine::secondDevice() const {
    return parts_->ports[1].path();
}

std::uint16_t SimulatedLine::holdingRegister(int station, int address) const {
    const ControllerMemory *memory = parts_->memoryOf(station);
    return memory != nullptr ? memory->holdingRegister(address) : std::uint16_t{0};
}

void SimulatedLine::setHoldingRegister(int station, int address, std::uint16_t value) {
    if (ControllerMemory *memory = parts_->memoryOf(station)) {
        memory->setHoldingRegister(address, value);
    }
}

bool SimulatedLine::coil(int station, int address) const {
    const ControllerMemory *memory = parts_->memoryOf(station);
    return memory != nullptr && memory->coil(address);
}

void SimulatedLine::setCoil(int station, int address, bool on) {
    if (ControllerMemory *memory = parts_->memoryOf(station)) {
        memory->setCoil(address, on);
    }
}

std::uint64_t SimulatedLine::faultCount(FaultKind kind) const {
    return parts_->faults.count(kind);
}
