#include "host/simulation/controller.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>

#include "host/simulation/moving_values.h"
#include "host/simulation/quiet_thread.h"

namespace simulation {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kLinkBaud = 115200;  // of the pseudo-terminal between relay and server, where it has no effect
constexpr std::chrono::milliseconds kServerPatience{1000};  // many times what a server takes on a busy machine

/// Milliseconds from now to a moment, rounded up: a poll() that wakes early would only poll again.
int millisecondsUntil(Clock::time_point moment) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(moment - Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

}  // namespace

Failure Controller::start(int station, bool moving, std::unique_ptr<Controller> *controller) {
    std::optional<PseudoTerminal> terminal;
    if (Failure failure = PseudoTerminal::open(&terminal)) {
        return failure;
    }
    const std::string name = "controller " + std::to_string(station);
    Server server(modbus_new_rtu(terminal->path().c_str(), kLinkBaud, 'N', 8, 1), &modbus_free);
    if (!server || modbus_set_slave(server.get(), station) != 0 || modbus_connect(server.get()) != 0) {
        return Failure::ofSystem(name, errno);
    }
    // Before the server sends an exception it sleeps for the response timeout, which it has no other use for.
    modbus_set_response_timeout(server.get(), 0, 1);

    std::unique_ptr<Controller> started(new Controller(station, std::move(*terminal), std::move(server)));
    if (!started->memory_.mapping) {
        return Failure::ofSystem(name, ENOMEM);
    }
    if (Failure failure = started->stop_.open()) {
        return failure;
    }
    try {
        started->thread_ = startThread([server = started.get(), moving] { server->serve(moving); });
    } catch (const std::system_error &failure) {
        return Failure::ofSystem(name, failure.code().value());
    }
    *controller = std::move(started);
    return Failure();
}

Controller::Controller(int station, PseudoTerminal terminal, Server server)
    : station_(station), terminal_(std::move(terminal)), server_(std::move(server)) {}

Controller::~Controller() {
    if (thread_.joinable()) {
        stop_.raise();
        thread_.join();
    }
    modbus_close(server_.get());
}

void Controller::serve(bool moving) {
    std::array<pollfd, 2> waitFor{{{stop_.descriptor(), POLLIN, 0}, {modbus_get_socket(server_.get()), POLLIN, 0}}};
    Clock::time_point nextMove = Clock::now();
    for (std::uint32_t step = 0;;) {
        if (moving && Clock::now() >= nextMove) {
            moveValues(memory_, station_, step++);
            nextMove = Clock::now() + kMovingStep;
        }
        ::poll(waitFor.data(), waitFor.size(), moving ? millisecondsUntil(nextMove) : -1);
        if (waitFor[0].revents != 0) {
            return;
        }
        if (waitFor[1].revents != 0) {
            answerOne();
        }
    }
}

void Controller::answerOne() {
    std::array<std::uint8_t, MODBUS_RTU_MAX_ADU_LENGTH> request;
    const int size = modbus_receive(server_.get(), request.data());
    if (size > 0) {
        const std::lock_guard<std::mutex> lock(memory_.mutex);
        modbus_reply(server_.get(), request.data(), size, memory_.mapping.get());
    }
    {
        const std::lock_guard<std::mutex> lock(servedMutex_);
        ++served_;
    }
    servedChanged_.notify_all();
}

Bytes Controller::exchange(const Bytes &request, const StopFlag &stop) {
    Bytes reply;
    terminal_.read(reply);  // nothing of an earlier exchange may stand before the reply
    reply.clear();
    ++handedOver_;
    terminal_.write(request);
    const Clock::time_point deadline = Clock::now() + kServerPatience;
    std::array<pollfd, 2> waitFor{{{stop.descriptor(), POLLIN, 0}, {terminal_.descriptor(), POLLIN, 0}}};
    while (replyLength(reply) == 0 || reply.size() < replyLength(reply)) {
        const int ready = ::poll(waitFor.data(), waitFor.size(), millisecondsUntil(deadline));
        if ((ready < 0 && errno != EINTR) || ready == 0 || (ready > 0 && waitFor[0].revents != 0)) {
            return {};
        }
        terminal_.read(reply);
    }
    return reply;
}

void Controller::broadcast(const Bytes &request) {
    ++handedOver_;
    terminal_.write(request);
    std::unique_lock<std::mutex> lock(servedMutex_);
    servedChanged_.wait_for(lock, kServerPatience, [this] { return served_ == handedOver_; });
}

}  // namespace simulation
