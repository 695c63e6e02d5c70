#include "driver_work.h"

#include <memory>
#include <stdexcept>

namespace {

enum Order { kShuffled, kSorted };

// 2 registers each, 3 apart: neighbours share requests.
QList<ReadVarEntry> variables(int count, Order order) {
    QList<ReadVarEntry> entries;
    for (int i = 0; i < count; ++i) {
        const int place = order == kSorted ? i : int(qint64(i) * 7919 % count);
        ReadVarEntry entry = ReadVarEntry();
        entry.elemType = 10;
        entry.addressText = QString::number(place * 3);
        entry.count = 2;
        entries.append(entry);
    }
    return entries;
}

QByteArray withCrc(QByteArray frame) {
    const int crc = CalCRC(reinterpret_cast<unsigned char *>(frame.data()), static_cast<unsigned short>(frame.size()));
    return frame.append(char(crc & 0xFF)).append(char(crc >> 8));
}

void expect(bool good, const char *what) {
    if (!good) {
        throw std::runtime_error(what);
    }
}

void exchange(QByteArray &reply) {
    expect(ComCommunication() != nullptr, "nothing to send");
    expect(DataCom(&reply, reply.size())->retValue == kResultGood, "the reply was not taken");
}

std::function<void()> cyclicRead(int registers) {
    bindHost();
    fillCyclicList(1, registers);
    return [reply = readReply(1, registers)]() mutable { exchange(reply); };
}

std::function<void()> rotation(int requests) {
    bindHost();
    fillCyclicList(requests, 1);
    QByteArray reply = readReply(1, 1);
    for (int i = 0; i < requests; ++i) {  // the room that the list had left behind its tail is used up
        exchange(reply);
    }
    return [reply]() mutable { exchange(reply); };
}

std::function<void()> allDisabled(int requests) {
    bindHost();
    fillCyclicList(requests, 1);
    EnableEthernet(1, 0);
    return [] { expect(ComCommunication() == nullptr, "a disabled station was asked"); };
}

std::function<void()> getRegister(int registers) {
    bindHost();
    const QString address = QString::fromLatin1("100");
    return [=, values = QByteArray()]() mutable { GetRegisterData(QString(), 7, address, 1, values, registers); };
}

// Reads 32 registers here and there, of stations with 8,000 registers each that are all in the cache.
std::function<void()> stationRead(int stations) {
    bindHost().useVarStation = 1;
    QByteArray values;
    for (int station = 1; station <= stations; ++station) {
        GetRegisterData(QString(), 7, QString::fromLatin1("0"), station, values, 8000);
    }
    QList<QString> addresses;
    for (int i = 0; i < 64; ++i) {
        addresses.append(QString::number(i * 125));
    }
    return [=, turn = 0]() mutable {
        turn = (turn + 7919) % (stations * 64);
        GetRegisterData(QString(), 7, addresses.at(turn % 64), turn / 64 + 1, values, 32);
    };
}

std::function<void()> setRegister(int registers) {
    bindHost().writeMode = 0;
    const QString address = QString::fromLatin1("100");
    const QByteArray values(registers * 2, 'x');
    return [=] { SetRegisterData(QString(), 7, address, 1, values, registers, 1, 1); };
}

std::function<void()> writeRegister(int registers) {
    bindHost();
    const QString address = QString::fromLatin1("100");
    const QByteArray values(registers * 2, 'x');
    QByteArray reply = withCrc(registers == 1 ? QByteArray("\x01\x06\x00\x64xx", 6)
                                              : QByteArray("\x01\x10\x00\x64\x00", 5).append(char(registers)));
    return [=]() mutable {
        SetRegisterData(QString(), 7, address, 1, values, registers, 1, 1);
        if (!ComCommunication()) {  // five writes in a row, then an idle call
            ComCommunication();
        }
        expect(DataCom(&reply, reply.size())->retValue == kResultGood, "the reply was not taken");
    };
}

// One write is answered and another queued, as they stand: so many wait all the time.
std::function<void()> queuedWrite(int waiting) {
    bindHost();
    RW_VAR write = RW_VAR();
    write.accessFlag = write.station = write.count = 1;
    write.elemType = 7;
    write.address = 100;
    write.data = QByteArray(2, 'x');
    const auto queueOne = [write]() mutable {
        ++write.itemId;
        AddListWriteVar(&write, 1);
    };
    std::function<void()> queue = queueOne;
    for (int i = 0; i < waiting; ++i) {
        queue();
    }
    return [queue, reply = withCrc(QByteArray("\x01\x06\x00\x64xx", 6))]() mutable {
        queue();
        if (!ComCommunication()) {
            ComCommunication();
        }
        expect(DataCom(&reply, reply.size())->retValue == kResultGood, "the reply was not taken");
    };
}

std::function<void()> rebuild(int count, Order order) {
    bindHost();
    const auto entries = std::make_shared<QList<ReadVarEntry>>(variables(count, order));
    return [entries] { ReCreatReadVarList(entries.get()); };
}

std::function<void()> crc(int length) {
    QByteArray bytes(length, 'x');
    return [=]() mutable {
        CalCRC(reinterpret_cast<unsigned char *>(bytes.data()), static_cast<unsigned short>(bytes.size()));
    };
}

}  // namespace

ComInfo &bindHost() {
    static ComInfo settings;
    settings = ComInfo();
    settings.maxGroupLength = 120;
    settings.defaultStation = 1;
    settings.writeMode = 2;
    SetComInfo(&settings);
    QList<ReadVarEntry> none;
    ReCreatReadVarList(&none);
    EnableEthernet(1, 0);  // its writes are dropped
    for (int idleCalls = 0; idleCalls < 2; ++idleCalls) {
        while (ComCommunication()) {
            DataCom(nullptr, 0);
        }
    }
    EnableEthernet(-1, 1);
    return settings;
}

void fillCyclicList(int count, int registers, int stations) {
    RW_VAR request = RW_VAR();
    request.itemId = -1;
    request.elemType = 7;
    request.count = registers;
    for (int i = 0; i < count; ++i) {
        request.address = i % 50 * 125;
        request.station = i % stations + 1;
        AddListReadVar(&request);
    }
}

QByteArray readReply(int station, int registers) {
    QByteArray reply;
    reply.append(char(station)).append('\x03').append(char(2 * registers));
    return withCrc(reply.append(QByteArray(2 * registers, 'x')));
}

const std::vector<Work> &allWork() {
    static const std::vector<Work> work = {
        {"cyclic_read", "registers", cyclicRead},
        {"rotation", "requests", rotation},
        {"all_disabled", "requests", allDisabled},
        {"get_register", "registers", getRegister},
        {"station_read", "stations", stationRead},
        {"set_register", "registers", setRegister},
        {"write_register", "registers", writeRegister},
        {"queued_write", "writes waiting", queuedWrite},
        {"rebuild", "variables", [](int count) { return rebuild(count, kShuffled); }},
        {"sorted_rebuild", "variables", [](int count) { return rebuild(count, kSorted); }},
        {"crc", "bytes", crc},
    };
    return work;
}

const Work &workNamed(const std::string &name) {
    for (const Work &work : allWork()) {
        if (work.name == name) {
            return work;
        }
    }
    throw std::runtime_error("no such work: " + name);
}
