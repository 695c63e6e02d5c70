#include <atomic>
#include <cstdio>
#include <random>
#include <thread>
#include <vector>

#include "korvel_dravo_elements.h"
#include "korvel_dravo_port.h"
#include "support/frame_text.h"
#include "threads/threads.h"

namespace {

const int kElementTypes = 22;
const int kStations = 4;
const int kLongQueue = 64;  // then a thread that asks for more takes a rest
const int kSwitches = 20;   // of stations, for each rebuild
const int kToDevice = 2;    // of ComInfo::writeMode
const int kCacheOnly = 1;

ComInfo settings;
std::atomic<bool> running;

// That no race was seen says little where nothing happened. Counted without order between the threads.
enum Happening {
    Good,
    Again,
    Failed,
    Done,
    WrittenOff,
    ListCalled,
    PassSeen,
    ValuesRead,
    CacheWritten,
    Rebuilt,
    kHappenings
};
const char *const kNames[kHappenings] = {"good replies",         "retries",        "failures",    "done reported",
                                         "failed reported",      "list callbacks", "passes seen", "values read",
                                         "written to the cache", "lists rebuilt"};
std::atomic<long> happened[kHappenings];

void count(Happening what) {
    happened[what].fetch_add(1, std::memory_order_relaxed);
}

// What one thread calls with.
class Dice {
public:
    explicit Dice(unsigned seed) : random_(seed) {}

    int below(int bound) { return int(random_() % unsigned(bound)); }
    int station() { return 1 + below(kStations); }
    QByteArray values() { return QByteArray(32, char(below(256))); }
    QString addressText(int elemType) {
        const QString text = QString::number(below(64), 8);  // digits that every type takes
        const bool bit = dravo::kElementTypes[elemType].elementClass == dravo::BitInWordClass;
        return bit ? text + QLatin1Char('.') + QString::number(below(8)) : text;
    }
    RW_VAR record(bool write) {
        RW_VAR var = RW_VAR();
        var.ownerId = below(14);
        var.itemId = below(3);
        var.accessFlag = write ? 1 : 0;
        var.nodeId = below(8) == 0 ? 1 : 0;
        var.elemType = below(kElementTypes);
        var.addressText = addressText(var.elemType);
        var.address = below(64);
        var.station = station();
        var.count = 1 + below(8);
        var.data = write ? values() : QByteArray();
        return var;
    }

private:
    std::mt19937 random_;
};

void readValues(Dice &dice) {
    const int elemType = dice.below(kElementTypes);
    QByteArray out;
    GetRegisterData(QString(), elemType, dice.addressText(elemType), dice.station(), out, 1 + dice.below(8));
    count(ValuesRead);
}

void writeValues(Dice &dice) {
    const int elemType = dice.below(kElementTypes);
    if (SetRegisterData(QString(), elemType, dice.addressText(elemType), dice.station(), dice.values(),
                        1 + dice.below(8), dice.below(14), dice.below(3)) == 1) {
        count(CacheWritten);
    }
}

void switchStation(Dice &dice) {
    const int station = dice.below(16) == 0 ? -1 : dice.station();
    dice.below(2) == 0 ? EnableEthernet(station, dice.below(2)) : EnCommStation(station, dice.below(2));
}

// Everything that a callback may do: what it calls, the settings that it changes and the one counter that it reads.
void calledBack() {
    static Dice dice(1);  // the communication thread's
    if (settings.cycleDone != 0) {
        count(PassSeen);
    }
    switch (dice.below(5)) {
        case 0: {
            RW_VAR var = dice.record(false);
            AddListReadVar(&var);
            break;
        }
        case 1:
            writeValues(dice);
            break;
        case 2:
            readValues(dice);
            break;
        case 3:
            switchStation(dice);
            break;
        case 4:
            if (settings.writeMode == kToDevice) {
                settings.remoteMode = dice.below(2);
                settings.localNode = dice.below(2);
                settings.retryTimes = dice.below(3);
            }
            break;
    }
}

void onVariable(void *, int, int, int code) {
    count(code == 1 ? Done : WrittenOff);
    calledBack();
}

void onList(QList<RW_VAR> *list, int, int) {
    count(ListCalled);
    list->append(RW_VAR());
    calledBack();
}

QByteArray replyTo(const Protocol &request, Dice &dice) {
    const int fault = dice.below(8);
    if (fault == 0) {
        return QByteArray();
    }
    const QByteArray head = request.frame.mid(settings.remoteMode != 0 ? 4 : 0, 1) + bytes("0302");
    QByteArray reply = withCrc(head.leftJustified(request.replyLength - 2, char(dice.below(256)), true));
    if (fault == 1) {
        reply[dice.below(reply.size())] = '\x5a';
    }
    return reply;
}

void communicate(Dice dice) {
    while (running.load(std::memory_order_relaxed)) {
        const Protocol *request = ComCommunication();
        if (!request) {
            std::this_thread::yield();
            continue;
        }
        QByteArray reply = replyTo(*request, dice);
        const int code = DataCom(&reply, reply.size())->retValue;
        count(code == kResultRetry ? Again : code == kResultGood || code == kResultRemoteGood ? Good : Failed);
    }
}

void exchangeValues(Dice dice) {
    while (running.load(std::memory_order_relaxed)) {
        int queued = 0;
        switch (dice.below(4)) {
            case 0: {
                RW_VAR var = dice.record(true);
                queued = AddListWriteVar(&var, dice.below(2));
                break;
            }
            case 1: {
                RW_VAR var = dice.record(false);
                queued = AddListOnceReadVar(&var, dice.below(2));
                break;
            }
            case 2:
                settings.writeMode == kToDevice ? readValues(dice) : writeValues(dice);
                break;
            case 3:
                readValues(dice);
                break;
        }
        if (queued > kLongQueue) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
}

void changeLists(Dice dice) {
    while (running.load(std::memory_order_relaxed)) {
        QList<ReadVarEntry> entries;
        for (int i = dice.below(40); i > 0; --i) {
            ReadVarEntry entry = ReadVarEntry();
            entry.elemType = uchar(dice.below(kElementTypes));
            entry.station = uchar(dice.station());
            entry.addressText = dice.addressText(entry.elemType);
            entry.count = 1 + dice.below(8);
            entries.append(entry);
        }
        ReCreatReadVarList(&entries);
        count(Rebuilt);
        for (int i = 0; i < kSwitches; ++i) {
            switchStation(dice);
        }
    }
}

void round(int writeMode, int remoteMode, unsigned seed, std::chrono::milliseconds time) {
    settings.writeMode = writeMode;
    settings.remoteMode = remoteMode;
    running = true;
    std::thread threads[] = {
        std::thread(communicate, Dice(seed)),
        std::thread(exchangeValues, Dice(seed + 1)),
        std::thread(exchangeValues, Dice(seed + 2)),
        std::thread(changeLists, Dice(seed + 3)),
    };
    std::this_thread::sleep_for(time);
    running = false;
    for (std::thread &thread : threads) {
        thread.join();
    }
}

}  // namespace

std::string driverThreads(std::chrono::milliseconds time) {
    settings.maxGroupLength = 8;
    settings.useVarStation = 1;
    settings.retryTimes = 1;
    SetComInfo(&settings);
    RegistCallBackFuncIntf(onVariable, onList);
    unsigned seed = 2;
    for (const int remoteMode : {0, 1}) {
        for (const int writeMode : {kToDevice, kCacheOnly}) {
            round(writeMode, remoteMode, seed, time / 4);
            seed += 4;
        }
    }
    SetComInfo(nullptr);  // the line engine leaves a bound driver alone
    std::string missing;
    for (int i = 0; i < kHappenings; ++i) {
        std::printf("%s: %ld\n", kNames[i], happened[i].load());
        if (happened[i] == 0) {
            missing += std::string("no ") + kNames[i] + "; ";
        }
    }
    return missing;
}
