#include <atomic>
#include <thread>
#include <vector>

#include "korvel_dravo_port.h"
#include "line/soak.h"
#include "threads/threads.h"

namespace {

const int kExchanges = 500;  // on each line

// What the header of the line engine allows beside it.
void readValues(const std::atomic<bool> &running, int elemType) {
    for (int i = 0; running.load(std::memory_order_relaxed); ++i) {
        dravo::Variable variable;
        variable.elemType = elemType;
        variable.addressText = QString::number(i % 7);
        variable.station = 1 + i % 3;
        variable.count = 4;
        if (dravo::resolve(&variable).isEmpty()) {
            dravo::Line::values(variable);
        }
        dravo::describeResult(i % 200, i % 4);
        dravo::conditionName(dravo::Condition(i % (dravo::Down + 1)));
    }
}

}  // namespace

std::string lineThreads(std::chrono::milliseconds time) {
    long exchanges = 0;
    const auto end = std::chrono::steady_clock::now() + time;
    for (unsigned seed = 1; std::chrono::steady_clock::now() < end; ++seed) {
        Soak soak(seed);
        std::atomic<bool> running(true);
        std::vector<std::thread> readers;
        for (const int elemType : {7, 12}) {
            readers.emplace_back([&running, elemType] { readValues(running, elemType); });
        }
        const bool isRight = soak.run(kExchanges).empty();
        running.store(false, std::memory_order_relaxed);
        for (std::thread &reader : readers) {
            reader.join();
        }
        if (!isRight) {
            return soak.report();
        }
        exchanges += soak.exchanges();
    }
    std::printf("line engine: %ld exchanges\n", exchanges);
    return exchanges > 0 ? std::string() : "no exchange on the line engine";
}
