#include <thread>

#include "driver/Communication_Protocol.h"
#include "threads/threads.h"

namespace {

const int kLongList = 2000;  // takes long enough for a short one to overtake it
const int kRegister = 7;

// Registers that share no request.
QList<ReadVarEntry> variables(int count) {
    QList<ReadVarEntry> entries;
    for (int i = 0; i < count; ++i) {
        ReadVarEntry entry = ReadVarEntry();
        entry.elemType = kRegister;
        entry.addressText = QString::number(i * 1000 % 8000);
        entry.count = 1;
        entries.append(entry);
    }
    return entries;
}

void waitFor(int waiting, std::chrono::milliseconds atMost) {
    const auto end = std::chrono::steady_clock::now() + atMost;
    while (PLC_driver.listMutex.waiting() < waiting && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

}  // namespace

// The list lock is held until the older rebuild has begun and waits for it; the newer one begins after that for sure.
std::string laterRebuildStays(std::chrono::milliseconds time) {
    static ComInfo settings;
    settings.defaultStation = 1;
    SetComInfo(&settings);
    QList<ReadVarEntry> longList = variables(kLongList);
    QList<ReadVarEntry> shortList = variables(1);
    const auto end = std::chrono::steady_clock::now() + time;
    do {
        PLC_driver.listMutex.lock();
        std::thread older([&] { ReCreatReadVarList(&longList); });
        waitFor(1, std::chrono::seconds(10));
        std::thread newer([&] { ReCreatReadVarList(&shortList); });
        waitFor(2, std::chrono::milliseconds(10));
        PLC_driver.listMutex.unlock();
        older.join();
        newer.join();
        if (PLC_driver.readVarList.size() != 1) {
            return "of two rebuilds at a time the list of the older one stayed";
        }
    } while (std::chrono::steady_clock::now() < end);
    return std::string();
}
