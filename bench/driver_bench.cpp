// What the driver costs its host, beside other ways to the same result, in one run: exchanges in memory and over a
// pseudo-terminal beside libmodbus and QtSerialBus, values beside bare containers, growth with variables, requests and
// stations, allocations, and how long others wait. Times are of the working thread; ratios hold where times do not.
#include <benchmark/benchmark.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QHash>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <thread>

#include "answering_line.h"
#include "driver_work.h"
#include "heap_count.h"
#include "hosts.h"
#include "ratio_table.h"

namespace {

using benchmark::RegisterBenchmark;
using benchmark::State;

std::string nameOf(const char *what, const char *who, int size) {
    return std::string(what) + "/" + who + "/" + std::to_string(size);
}

void exchanges(State &state, Host &host) {
    for (auto _ : state) {
        if (!host.exchange()) {
            state.SkipWithError("no good reply");
            break;
        }
    }
}

// ---- one read, beside other libraries ----

void inMemory(int registers) {
    RegisterBenchmark(nameOf("exchange in memory", "driver", registers).c_str(),
                      [=](State &state) { exchanges(state, *driverHost(registers)); });
    RegisterBenchmark(nameOf("exchange in memory", "libmodbus", registers).c_str(), [=](State &state) {
        const MemoryLine line(readReply(1, registers));
        exchanges(state, *libmodbusHost(registers, line.descriptor()));
    });
}

void onSockets(int registers) {
    RegisterBenchmark(nameOf("exchange on a socket", "driver", registers).c_str(), [=](State &state) {
        const SocketLine line(readReply(1, registers));
        exchanges(state, *driverHost(registers, line.descriptor()));
    });
    RegisterBenchmark(nameOf("exchange on a socket", "libmodbus", registers).c_str(), [=](State &state) {
        const SocketLine line(readReply(1, registers));
        exchanges(state, *libmodbusHost(registers, line.descriptor()));
    });
}

template <typename MakeHost>
auto *overTerminal(const char *who, int registers, MakeHost makeHost) {
    return RegisterBenchmark(nameOf("exchange on a terminal", who, registers).c_str(), [=](State &state) {
        const PtyLine line(readReply(1, registers));
        const std::unique_ptr<Host> host = makeHost(registers, line.path());
        exchanges(state, *host);
    });
}

// Many short runs: some meet the kernel's worker on their own processor, see PtyLine. QtSerialBus waits 2 ms each time.
void onTerminals(int registers) {
    overTerminal("driver", registers, [](int n, const std::string &path) { return driverHost(n, path); })
        ->Iterations(2000)
        ->Repetitions(25);
    overTerminal("libmodbus", registers, [](int n, const std::string &path) { return libmodbusHost(n, path); })
        ->Iterations(2000)
        ->Repetitions(25);
    overTerminal("QtSerialBus", registers, [](int n, const std::string &path) { return qtSerialBusHost(n, path); })
        ->Iterations(100)
        ->Repetitions(5);
}

// ---- values, beside bare containers ----

void work(const char *what, const char *name, int size) {
    RegisterBenchmark(nameOf(what, "driver", size).c_str(), [=](State &state) {
        const std::function<void()> once = workNamed(name).prepare(size);
        for (auto _ : state) {
            once();
        }
        state.counters["allocations"] = double(countHeap(once).allocations);
    });
}

QHash<unsigned int, QByteArray> bareEntries() {
    QHash<unsigned int, QByteArray> entries;
    for (unsigned int address = 0; address < 8000; ++address) {
        entries.insert(0x01070000U + address, QByteArray(2, 'x'));
    }
    return entries;
}

void values(int registers) {
    work("GetRegisterData", "get_register", registers);
    RegisterBenchmark(nameOf("GetRegisterData", "QHash", registers).c_str(), [=](State &state) {
        const QHash<unsigned int, QByteArray> entries = bareEntries();
        for (auto _ : state) {
            QByteArray out;
            out.reserve(registers * 2);
            for (int i = 0; i < registers; ++i) {
                out.append(*entries.constFind(0x01070064U + unsigned(i)));
            }
            benchmark::DoNotOptimize(out);
        }
    });
    work("SetRegisterData", "set_register", registers);
    RegisterBenchmark(nameOf("SetRegisterData", "QHash", registers).c_str(), [=](State &state) {
        QHash<unsigned int, QByteArray> entries = bareEntries();
        const QByteArray in(registers * 2, 'y');
        for (auto _ : state) {
            for (int i = 0; i < registers; ++i) {
                char *entry = entries[0x01070064U + unsigned(i)].data();
                std::copy_n(in.constData() + 2 * i, 2, entry);
            }
            benchmark::ClobberMemory();
        }
    });
}

// ---- how long others wait ----

// Runs background in another thread and once here, and counts how long the calls here took.
void waiting(State &state, const std::function<void()> &background, const std::function<void()> &once) {
    std::atomic<bool> done{false};
    std::thread other([&] {
        while (!done) {
            background();
        }
    });
    std::vector<double> waits;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        once();
        waits.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
    }
    done = true;
    other.join();
    std::sort(waits.begin(), waits.end());
    state.counters["median µs"] = waits[waits.size() / 2];
    state.counters["99.9 % below µs"] = waits[waits.size() - 1 - waits.size() / 1000];
    state.counters["longest µs"] = waits.back();
}

void waits() {
    RegisterBenchmark("read beside a busy line/driver/1", [](State &state) {
        const std::function<void()> read = workNamed("get_register").prepare(1);
        waiting(state, workNamed("cyclic_read").prepare(120), read);
    });
    RegisterBenchmark("exchange beside rebuilds/driver/100000", [](State &state) {
        const std::function<void()> rebuild = workNamed("rebuild").prepare(100000);
        rebuild();
        QByteArray reply = readReply(1, 120);
        waiting(state, rebuild, [&reply] {
            ComCommunication();
            DataCom(&reply, reply.size());
        });
    });
}

// ---- growth ----

double threadMilliseconds() {
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

// The cache never forgets: this is to be the first work of the program.
void firstReads(State &state) {
    QByteArray out;
    bindHost().useVarStation = 1;
    double slowest = 0;
    for (auto _ : state) {
        for (int i = 0; i < 25000; ++i) {
            const QString address = QString::number(i % 250 * 32);
            const double start = threadMilliseconds();
            GetRegisterData(QString(), 11, address, i / 250 + 1, out, 32);
            slowest = std::max(slowest, threadMilliseconds() - start);
        }
    }
    state.counters["slowest ms"] = slowest;
}

void growth() {
    for (int size = 1000; size <= 1000000; size *= 10) {
        work("rebuild of variables", "rebuild", size);
    }
    work("rebuild of sorted variables", "sorted_rebuild", 100000);
    for (int size = 10; size <= 1000000; size = size * (size == 10 ? 100 : 10)) {
        work("exchange in a list of requests", "rotation", size);
    }
    for (const int waiting : {10, 1000, 30000}) {
        work("write with others waiting", "queued_write", waiting);
    }
    work("idle call with every request disabled", "all_disabled", 100000);
    for (const int stations : {1, 10, 100, 200}) {
        work("read of 32 among stations of 8,000", "station_read", stations);
    }
    RegisterBenchmark("memory of a rebuild/driver/100000", [](State &state) {
        const std::function<void()> rebuild = workNamed("rebuild").prepare(100000);
        for (auto _ : state) {
            state.counters["most bytes a variable"] = double(countHeap(rebuild).mostBytes) / 100000;
        }
    });
}

}  // namespace

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    RegisterBenchmark("first read of 800,000 registers/driver/800000", firstReads)->Iterations(1)->Repetitions(1);
    for (const auto compare : {inMemory, onSockets, onTerminals, values}) {
        for (const int registers : {1, 32, 120}) {
            compare(registers);
        }
    }
    work("write of a register", "write_register", 1);
    work("write of registers", "write_register", 120);
    work("CalCRC", "crc", 6);
    work("CalCRC", "crc", 245);
    waits();
    growth();
    RatioTable table(benchmark::ConsoleReporter::OO_Tabular);
    benchmark::RunSpecifiedBenchmarks(&table);
    return table.hasErrors() ? 1 : 0;
}
