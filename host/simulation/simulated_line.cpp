#include "host/simulation/simulated_line.h"

#include <algorithm>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

#include "host/simulation/quiet_thread.h"
#include "host/simulation/relay.h"

using namespace simulation;

namespace {

// A machine without real-time threads needs longer than the characters alone to tell a silence from a pause. Whole
// requests are known by their CRC and do not wait for it.
constexpr std::chrono::milliseconds kShortestSilence{5};
constexpr int kBitsPerCharacter = 11;

Clock::duration frameSilence(int baud) {
    const std::chrono::duration<double> characters(3.5 * kBitsPerCharacter / baud);
    return std::max<Clock::duration>(std::chrono::duration_cast<Clock::duration>(characters), kShortestSilence);
}

bool isStation(int number) {
    return number >= 1 && number <= 247;
}

Failure checkOptions(const SimulatedLineOptions &options) {
    const std::set<int> stations(options.stations.begin(), options.stations.end());
    if (stations.empty()) {
        return Failure("a line needs at least one station");
    }
    if (!std::all_of(stations.begin(), stations.end(), isStation)) {
        return Failure("a station is a number from 1 to 247");
    }
    if (stations.size() != options.stations.size()) {
        return Failure("a station is named twice");
    }
    if (options.deadStation != 0 && stations.count(options.deadStation) == 0) {
        return Failure("the dead station " + std::to_string(options.deadStation) + " is not on the line");
    }
    if (options.baud <= 0) {
        return Failure("the baud rate must be positive");
    }
    if (options.lateBy < std::chrono::milliseconds::zero() || options.lateBy > std::chrono::hours(1)) {
        return Failure("a late reply comes after 0 milliseconds to one hour");
    }
    if (options.remoteNode < -1 || options.remoteNode > 255) {
        return Failure("a remote node is a number from 0 to 255");
    }
    std::set<FaultKind> kinds;
    for (const LineFault &fault : options.faults) {
        if (fault.kind == FaultKind::DeadStation) {
            return Failure("a dead station is named by its number");
        }
        if (!(fault.probability >= 0.0 && fault.probability <= 1.0)) {
            return Failure("a fault's probability is from 0 to 1");
        }
        if (!kinds.insert(fault.kind).second) {
            return Failure("a fault is named twice");
        }
    }
    return Failure();
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
    const FrameRules rules{frameSilence(options.baud), options.remoteNode >= 0};
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
