// Several thousand operations on a line with every fault, seeded. After each exchange:
// - no controller cell changed but those that the request writes, to the values it writes, its single bits alone;
// - the cache holds only what a controller held or the host wrote;
// - every write and one-shot read was reported exactly as the rules say, code and count.
//
// What a line can still do: a late reply of the right station and length answers an earlier request, and nothing in it
// says so. The link empties the input before each request and, after a request without an answer, holds the next
// different one to that station back for half a timeout more; a reply that is later still would be believed.
#include <gtest/gtest.h>

#include <random>

#include "e2e/faulty_line_model.h"
#include "host/serial_link.h"

namespace {

constexpr int kOperations = 3000;
constexpr int kTimeoutMs = 80;
constexpr int kRetries = 2;
constexpr int kDeadStation = 3;

struct Area {
    int elemType;
    int firstAddress;  // of kAreaSize addresses, a bound in the middle of most
    bool isCoil;
    int bound;  // and the Modbus addresses of the elements below and from it on
    int below;
    int above;
    int cellsPerElement;
};
constexpr int kAreaSize = 10;
const Area kAreas[] = {
    {1, 1000, true, 1000, 1000, 1000, 1},  {3, 251, true, 256, 4651, 30000, 1},  {7, 7995, false, 8000, 7995, 50000, 1},
    {13, 251, false, 256, 9802, 10000, 2}, {9, 251, false, 256, 9251, 11000, 1}, {19, 40, false, 40, 13040, 13040, 1},
};
constexpr int kBitWord = 600;  // word of type 15 whose bits are written one by one

class FaultyLine : public ::testing::Test {
protected:
    static FaultyLine *current;

    void SetUp() override {
        SimulatedLineOptions options;
        options.stations = {1, 2, kDeadStation};
        options.moving = false;
        options.deadStation = kDeadStation;
        options.seed = 20;
        options.lateBy = std::chrono::milliseconds(kTimeoutMs + kTimeoutMs / 4);
        options.faults = {{FaultKind::NoReply, 0.02},       {FaultKind::LateReply, 0.02},
                          {FaultKind::Truncated, 0.03},     {FaultKind::FlippedBit, 0.04},
                          {FaultKind::StrayByte, 0.04},     {FaultKind::WrongStation, 0.04},
                          {FaultKind::ExceptionReply, 0.04}};
        std::string error;
        line = SimulatedLine::start(options, &error);
        ASSERT_TRUE(line) << error;
        std::set<Cell> cells = everyCell();
        for (const Cell &cell : cells) {
            if (cell.isCoil) {
                line->setCoil(cell.station, cell.address, random() % 2 != 0);
            } else {
                line->setHoldingRegister(cell.station, cell.address, quint16(random()));
            }
        }
        watch = std::make_unique<MemoryWatch>(*line, cells);

        LineSettings settings;
        settings.device = QString::fromStdString(line->device());
        settings.timeoutMs = kTimeoutMs;
        ASSERT_TRUE(link.open(settings)) << link.openError().toStdString();

        current = this;
        comInfo.maxGroupLength = 6;
        comInfo.useVarStation = 1;
        comInfo.retryTimes = kRetries;
        comInfo.writeMode = 2;
        SetComInfo(&comInfo);
        RegistCallBackFuncIntf(
            [](void *, int ownerId, int itemId, int code) {
                current->callbacks.push_back({ownerId, itemId, code});
            },
            [](QList<RW_VAR> *, int, int) { ++current->failures; });
    }
    void TearDown() override {
        SetComInfo(nullptr);
        RegistCallBackFuncIntf(nullptr, nullptr);
    }

    unsigned int random() { return unsigned(generator()); }
    int below(int bound) { return int(random() % unsigned(bound)); }

    static Cell cellOf(const Area &area, int station, int address, int part) {
        const int first = address < area.bound ? area.below + (address - area.firstAddress) * area.cellsPerElement
                                               : area.above + (address - area.bound) * area.cellsPerElement;
        return {station, area.isCoil, first + part};
    }
    static std::set<Cell> everyCell() {
        std::set<Cell> cells;
        for (int station = 1; station <= 3; ++station) {
            for (const Area &area : kAreas) {
                for (int i = -2; i < kAreaSize + 2; ++i) {  // and the neighbours on both sides
                    for (int part = 0; part < area.cellsPerElement; ++part) {
                        cells.insert(cellOf(area, station, area.firstAddress + i, part));
                    }
                }
            }
            cells.insert({station, false, kBitWord});
        }
        return cells;
    }

    int someStation() { return below(40) == 0 ? kDeadStation : 1 + below(2); }

    // Identifiers repeat now and then, so that later requests of the same identifiers wait.
    Queued newRequest(int station) {
        ++lastItem;
        return {below(12) == 0 ? 40 : 20 + below(15), below(5) == 0 ? 1 : lastItem, station, {}};
    }

    void queueBitWrite() {
        Queued request = newRequest(someStation());
        const int bit = below(16);
        const int on = below(2);
        request.writes = {{{request.station, false, kBitWord}, 1 << bit, on << bit}};
        const QString address = QString::fromLatin1("%1.%2").arg(kBitWord).arg(bit);
        SetRegisterData(QString(), 15, address, request.station, QByteArray(1, char(on)), 1, request.ownerId,
                        request.itemId);
        writes.push_back(request);
    }

    // Stays on one side of the bound, so that one record is queued.
    void queueWrite() {
        const Area &area = kAreas[below(int(std::size(kAreas)))];
        Queued request = newRequest(someStation());
        const bool upper = below(2) != 0 || area.bound == area.firstAddress;
        const int first = upper ? area.bound : area.firstAddress;
        const int count = 1 + below(5);
        QByteArray values;
        for (int i = 0; i < count; ++i) {
            for (int part = 0; part < area.cellsPerElement; ++part) {
                const int value = area.isCoil ? below(2) : int(random() & 0xFFFFu);
                // Of a double word the low half comes first here and second on the wire.
                request.writes.push_back(
                    {cellOf(area, request.station, first + i, area.cellsPerElement - 1 - part), 0xFFFF, value});
                values.append(char(value & 0xFF));
                if (!area.isCoil) {
                    values.append(char(value >> 8));
                }
            }
        }
        for (const CellWrite &write : request.writes) {
            watch->noteWritten(write);
        }
        const QString address = QString::number(first, area.elemType == 1 ? 8 : 10);
        SetRegisterData(QString(), area.elemType, address, request.station, values, count * area.cellsPerElement,
                        request.ownerId, request.itemId);
        writes.push_back(request);
    }

    void queueOnceRead() {
        const Area &area = kAreas[below(int(std::size(kAreas)))];
        Queued request = newRequest(someStation());
        const bool upper = below(2) != 0 || area.bound == area.firstAddress;
        RW_VAR var = RW_VAR();
        var.ownerId = request.ownerId;
        var.itemId = request.itemId;
        var.nodeId = comInfo.localNode;
        var.elemType = area.elemType;
        var.addressText = QString::number(upper ? area.bound : area.firstAddress, area.elemType == 1 ? 8 : 10);
        var.station = request.station;
        var.count = (1 + below(5)) * area.cellsPerElement;
        const int size = AddListOnceReadVar(&var, 0);
        if (size > int(onceReads.size())) {  // else the same read is queued already
            onceReads.push_back(request);
        }
        ASSERT_EQ(size, int(onceReads.size()));
    }

    void addCyclicReads() {
        QList<ReadVarEntry> entries;
        for (const Area &area : kAreas) {
            for (int station = 1; station <= 2; ++station) {
                ReadVarEntry entry = ReadVarEntry();
                entry.elemType = uchar(area.elemType);
                entry.station = uchar(station);
                entry.addressText = QString::number(area.firstAddress, area.elemType == 1 ? 8 : 10);
                entry.count = kAreaSize * area.cellsPerElement;
                entries.append(entry);
            }
        }
        ASSERT_GT(ReCreatReadVarList(&entries), 12);
    }

    static bool isGood(const QByteArray &reply, const Protocol &request) {
        QByteArray bytes = reply;
        const int length = bytes.size() - 2;
        return bytes.size() == request.replyLength && bytes.at(0) == request.frame.at(0) &&
               CalCRC(reinterpret_cast<unsigned char *>(bytes.data()), quint16(length)) ==
                   uchar(bytes.at(length)) + 256 * uchar(bytes.at(length + 1));
    }

    void exchange(const Protocol &request) {
        const bool mergeRead = request.var.param1 == -1;
        const bool isWrite = mergeRead || request.var.accessFlag != 0;
        std::deque<Queued> *queue = isWrite ? &writes : request.var.itemId == -1 ? nullptr : &onceReads;
        const std::vector<CellWrite> allowed = isWrite && !mergeRead ? writes.front().writes : std::vector<CellWrite>();
        const Protocol sent = request;  // gone after DataCom
        QByteArray reply;
        ASSERT_EQ(link.exchange(
                      {sent.frame, sent.replyLength, sent.var.station}, [] { return true; }, &reply),
                  SerialLink::Result::Done);
        const std::vector<std::string> strange = watch->changesBeyond(allowed);
        ASSERT_TRUE(strange.empty()) << strange.front() << " by " << sent.frame.toHex().toStdString();

        callbacks.clear();
        failures = 0;
        const int code = DataCom(&reply, reply.size())->retValue;
        const bool good = isGood(reply, sent);
        const bool failed = !good && ++badReplies > kRetries;
        badReplies = failed ? 0 : badReplies;
        ASSERT_EQ(code, good ? 1 : failed ? code : 0);
        ASSERT_EQ(failures, failed ? 1 : 0);
        ASSERT_TRUE(!failed || code > kResultLocalRejected);
        if (!queue || !(failed || (good && !mergeRead))) {
            ASSERT_TRUE(callbacks.empty());
            return;
        }
        const Queued head = queue->front();
        const int expected = expectedCallback(*queue, failed);
        ASSERT_EQ(int(callbacks.size()), expected == 0 ? 0 : 1);
        if (expected != 0) {
            ASSERT_EQ(callbacks.front(), std::make_tuple(head.ownerId, head.itemId, expected));
        }
        finish(*queue, failed);
        ++finished;
    }

    // Zero is what a value never seen reads as.
    void checkCache() {
        for (const Area &area : kAreas) {
            for (int station = 1; station <= 2; ++station) {
                for (int i = 0; i < kAreaSize; ++i) {
                    checkElement(area, station, area.firstAddress + i);
                }
            }
        }
    }
    void checkElement(const Area &area, int station, int address) {
        QByteArray values;
        GetRegisterData(QString(), area.elemType, QString::number(address, area.elemType == 1 ? 8 : 10), station,
                        values, area.cellsPerElement);
        const int width = area.isCoil ? 1 : 2;
        for (int part = 0; part < area.cellsPerElement; ++part) {
            const int at = (area.cellsPerElement - 1 - part) * width;
            const int value = uchar(values.at(at)) + (area.isCoil ? 0 : 256 * uchar(values.at(at + 1)));
            const Cell cell = cellOf(area, station, address, part);
            ASSERT_TRUE(value == 0 || watch->everHeld(cell, value))
                << "type " << area.elemType << " address " << address << " shows " << value;
        }
    }

    struct ComInfo comInfo = ComInfo();
    std::mt19937 generator{7};
    std::unique_ptr<SimulatedLine> line;
    std::unique_ptr<MemoryWatch> watch;
    SerialLink link;
    std::deque<Queued> writes;
    std::deque<Queued> onceReads;
    std::vector<std::tuple<int, int, int>> callbacks;
    int failures = 0;
    int badReplies = 0;
    int lastItem = 100;
    int finished = 0;
};
FaultyLine *FaultyLine::current = nullptr;

TEST_F(FaultyLine, KeepsValuesOutcomesAndNeighbouringBits) {
    addCyclicReads();
    for (int operation = 0; operation < kOperations && !HasFatalFailure(); ++operation) {
        if (writes.size() < 8 && below(2) != 0) {
            below(3) == 0 ? queueBitWrite() : queueWrite();
        } else if (onceReads.size() < 8) {
            queueOnceRead();
        }
        const Protocol *request = ComCommunication();
        if (request) {
            exchange(*request);
        }
        if (operation % 20 == 0) {
            checkCache();
        }
    }
    while ((!writes.empty() || !onceReads.empty()) && !HasFatalFailure()) {
        if (const Protocol *request = ComCommunication()) {
            exchange(*request);
        }
    }
    checkCache();
    EXPECT_GT(finished, kOperations / 2);
    for (int kind = 0; kind < kFaultKinds; ++kind) {
        EXPECT_GT(line->faultCount(FaultKind(kind)), 0u) << "fault " << kind << " never happened";
    }
}

}  // namespace
