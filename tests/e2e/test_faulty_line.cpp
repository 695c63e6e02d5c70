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
#include "host/pump/serial_link.h"
#include "korvel_dravo_port.h"
#include "support/frame_text.h"

namespace {

constexpr int kOperations = 3000;
constexpr int kTimeoutMs = 80;
constexpr int kRetries = 2;
constexpr int kDeadStation = 3;

// Ten elements, a bound of the address map in their middle.
struct Area {
    int elemType;
    bool isCoil;
    int first;  // element
    int below;  // its Modbus address
    int above;  // and that of the fifth after it, which lies elsewhere
    Cell cell(int station, int i) const { return {station, isCoil, i < 5 ? below + i : above + i - 5}; }
};
const Area kAreas[] = {{2, true, 2043, 4043, 12000},
                       {3, true, 251, 4651, 30000},
                       {7, false, 7995, 7995, 50000},
                       {8, false, 251, 8251, 12000},
                       {9, false, 251, 9251, 11000}};
constexpr int kBitWord = 600;  // word of type 15 whose bits are written one by one

class FaultyLine : public ::testing::Test {
protected:
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
        const simulation::Failure refused = SimulatedLine::start(options, &line);
        ASSERT_FALSE(refused) << refused.text();
        watch = std::make_unique<MemoryWatch>(*line);
        for (int station : options.stations) {
            for (const Area &area : kAreas) {
                for (int i = 0; i < 10; ++i) {
                    addCell(area.cell(station, i));
                    addCell(area.cell(station, i < 5 ? i - 5 : i + 5));  // and the neighbours on both sides
                }
            }
            addCell({station, false, kBitWord});
        }

        LineSettings settings;
        settings.device = QString::fromStdString(line->device());
        settings.timeoutMs = kTimeoutMs;
        settings.baud = 115200;  // shorter gaps between the frames
        const Failure failure = link.open(settings);
        ASSERT_FALSE(failure) << failure.text().toStdString();
        comInfo.maxGroupLength = 6;
        comInfo.useVarStation = 1;
        comInfo.retryTimes = kRetries;
        comInfo.writeMode = 2;
        SetComInfo(&comInfo);
        RegistCallBackFuncIntf(
            [](void *, int ownerId, int itemId, int code) {
                callbacks.push_back({ownerId, itemId, code});
            },
            [](QList<RW_VAR> *, int, int) { ++failures; });
    }
    void TearDown() override {
        SetComInfo(nullptr);
        RegistCallBackFuncIntf(nullptr, nullptr);
    }

    int below(int bound) { return int(generator() % unsigned(bound)); }
    const Area &someArea() { return kAreas[below(int(std::size(kAreas)))]; }

    void addCell(const Cell &cell) {
        const auto [station, isCoil, address] = cell;
        isCoil ? line->setCoil(station, address, below(2) != 0)
               : line->setHoldingRegister(station, address, quint16(below(65536)));
        watch->add(cell);
    }

    // Identifiers repeat now and then, so that later requests of the same identifiers wait.
    Queued newRequest() {
        const int station = below(60) == 0 ? kDeadStation : 1 + below(2);
        return below(8) == 0 ? Queued{40, 1, station, {}} : Queued{20 + below(15), ++lastItem, station, {}};
    }

    void queueWrite(const Queued &request, int elemType, const QString &address, const QByteArray &values, int count) {
        SetRegisterData(QString(), elemType, address, request.station, values, count, request.ownerId, request.itemId);
        writes.push_back(request);
    }
    void queueBitWrite() {
        Queued request = newRequest();
        const int bit = below(16);
        const int on = below(2);
        request.writes[{request.station, false, kBitWord}] = {1 << bit, on << bit};
        queueWrite(request, 15, QString("%1.%2").arg(kBitWord).arg(bit), QByteArray(1, char(on)), 1);
    }
    // Stays on one side of the bound, so that one record is queued.
    void queueValues() {
        const Area &area = someArea();
        Queued request = newRequest();
        const int first = 5 * below(2);
        const int count = 1 + below(5);
        QByteArray values;
        for (int i = first; i < first + count; ++i) {
            const int value = below(area.isCoil ? 2 : 65536);
            request.writes[area.cell(request.station, i)] = {0xFFFF, value};
            watch->noteWritten(area.cell(request.station, i), value);
            values.append(char(value));
            if (!area.isCoil) {
                values.append(char(value >> 8));
            }
        }
        queueWrite(request, area.elemType, QString::number(area.first + first), values, count);
    }

    void queueOnceRead() {
        const Area &area = someArea();
        const Queued request = newRequest();
        RW_VAR var = RW_VAR();
        var.ownerId = request.ownerId;
        var.itemId = request.itemId;
        var.elemType = area.elemType;
        var.addressText = QString::number(area.first + 5 * below(2));
        var.station = request.station;
        var.count = 1 + below(5);
        const size_t size = size_t(AddListOnceReadVar(&var, 0));
        if (size > onceReads.size()) {  // else the same read is queued already
            onceReads.push_back(request);
        }
        ASSERT_EQ(size, onceReads.size());
    }

    void addCyclicReads() {
        QList<ReadVarEntry> entries;
        for (const Area &area : kAreas) {
            for (int station = 1; station <= 2; ++station) {
                ReadVarEntry entry = ReadVarEntry();
                entry.elemType = uchar(area.elemType);
                entry.station = uchar(station);
                entry.addressText = QString::number(area.first);
                entry.count = 10;
                entries.append(entry);
            }
        }
        ASSERT_GT(ReCreatReadVarList(&entries), 10);
    }

    void exchange(const Protocol &request) {
        const bool mergeRead = request.var.param1 == -1;
        const bool isWrite = mergeRead || request.var.accessFlag != 0;
        std::deque<Queued> *queue = isWrite ? &writes : request.var.itemId == -1 ? nullptr : &onceReads;
        const Protocol sent = request;  // gone after DataCom
        QByteArray reply;
        ASSERT_EQ(link.exchange(
                      {sent.frame, sent.replyLength, sent.var.station}, [] { return true; }, &reply),
                  SerialLink::Result::Done);
        const bool writesNow = isWrite && !mergeRead;
        const auto strange = watch->changesBeyond(writesNow ? writes.front().writes : std::map<Cell, CellWrite>());
        ASSERT_TRUE(strange.empty()) << testing::PrintToString(strange) << " by " << sent.frame.toHex().toStdString();

        callbacks.clear();
        failures = 0;
        const bool good = reply.size() == sent.replyLength && reply.at(0) == sent.frame.at(0) &&
                          reply == withCrc(reply.left(reply.size() - 2));
        const int code = DataCom(&reply, reply.size())->retValue;
        const bool failed = !good && ++badReplies > kRetries;
        badReplies = failed ? 0 : badReplies;
        ASSERT_EQ(code, good ? 1 : failed ? code : 0);
        ASSERT_TRUE(!failed || code > kResultLocalRejected);
        ASSERT_EQ(failures, failed ? 1 : 0);
        std::vector<std::tuple<int, int, int>> expected;
        if (queue && (failed || (good && !mergeRead))) {
            expected = finishHead(*queue, failed);
            ++finished;
        }
        ASSERT_EQ(callbacks, expected);
    }

    void checkCache() {
        for (const Area &area : kAreas) {
            for (int i = 0; i < 20; ++i) {
                const Cell cell = area.cell(1 + i / 10, i % 10);
                QByteArray bytes;
                GetRegisterData(QString(), area.elemType, QString::number(area.first + i % 10), 1 + i / 10, bytes, 1);
                const int value = uchar(bytes.at(0)) + (area.isCoil ? 0 : 256 * uchar(bytes.at(1)));
                ASSERT_TRUE(value == 0 || watch->everHeld(cell, value))  // 0: never read
                    << testing::PrintToString(cell) << " shows " << value;
            }
        }
    }

    struct ComInfo comInfo = ComInfo();
    std::mt19937 generator{7};
    std::unique_ptr<SimulatedLine> line;
    std::unique_ptr<MemoryWatch> watch;
    SerialLink link;
    std::deque<Queued> writes;
    std::deque<Queued> onceReads;
    int badReplies = 0;
    int lastItem = 100;
    int finished = 0;
    static inline std::vector<std::tuple<int, int, int>> callbacks;
    static inline int failures = 0;
};

TEST_F(FaultyLine, KeepsValuesOutcomesAndNeighbouringBits) {
    addCyclicReads();
    for (int operation = 0; (operation < kOperations || !writes.empty() || !onceReads.empty()) && !HasFatalFailure();
         ++operation) {
        if (operation >= kOperations) {
            // what is queued is finished
        } else if (writes.size() < 8 && below(2) != 0) {
            below(3) == 0 ? queueBitWrite() : queueValues();
        } else if (onceReads.size() < 8) {
            queueOnceRead();
        }
        if (const Protocol *request = ComCommunication()) {
            exchange(*request);
        }
        if (operation % 20 == 0) {
            checkCache();
        }
    }
    checkCache();
    EXPECT_GT(finished, kOperations / 2);
    for (int kind = 0; kind < kFaultKinds; ++kind) {
        EXPECT_GT(line->faultCount(FaultKind(kind)), 0u) << "fault " << kind << " never happened";
    }
}

}  // namespace
