// The simulated line as a master sees it: through its devices, with another Modbus library's client or byte by byte.
#include "host/simulation/simulated_line.h"

#include <gtest/gtest.h>
#include <modbus.h>
#include <poll.h>
#include <unistd.h>

#include <QtCore/QByteArray>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <thread>

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPatience{2000};  // for a reply that must come
constexpr milliseconds kNothing{60};     // for one that must not

QByteArray hex(const char *digits) {
    return QByteArray::fromHex(digits);
}

std::unique_ptr<SimulatedLine> startLine(const std::function<void(SimulatedLineOptions &)> &change = nullptr) {
    SimulatedLineOptions options;
    options.stations = {1, 2, 247};
    options.moving = false;
    if (change) {
        change(options);
    }
    std::string error;
    std::unique_ptr<SimulatedLine> line = SimulatedLine::start(options, &error);
    EXPECT_NE(line, nullptr) << error;
    return line;
}

class Master {
public:
    explicit Master(const std::string &device) : client_(modbus_new_rtu(device.c_str(), 19200, 'N', 8, 1)) {
        EXPECT_EQ(modbus_connect(client_), 0) << modbus_strerror(errno);
        modbus_set_response_timeout(client_, 2, 0);
    }
    ~Master() {
        modbus_close(client_);
        modbus_free(client_);
    }
    Master(const Master &) = delete;
    Master &operator=(const Master &) = delete;

    modbus_t *at(int station) {
        modbus_set_slave(client_, station);
        return client_;
    }
    void send(const QByteArray &bytes) {
        ASSERT_EQ(::write(modbus_get_socket(client_), bytes.constData(), static_cast<std::size_t>(bytes.size())),
                  bytes.size());
    }
    /// What arrives until size bytes are there or nothing has come for so long.
    QByteArray receive(int size, milliseconds patience = kPatience) {
        QByteArray got;
        pollfd waitFor{modbus_get_socket(client_), POLLIN, 0};
        while (got.size() < size && ::poll(&waitFor, 1, static_cast<int>(patience.count())) > 0) {
            char chunk[512];
            const ssize_t n = ::read(waitFor.fd, chunk, sizeof chunk);
            if (n <= 0) {
                break;
            }
            got.append(chunk, static_cast<int>(n));
        }
        return got;
    }
    QByteArray ask(const QByteArray &request, int size, milliseconds patience = kPatience) {
        send(request);
        return receive(size, patience);
    }

private:
    modbus_t *client_;
};

// Station 1, one register at 16 that holds 1234.
const QByteArray kRead = hex("0103 0010 0001 85cf");
const QByteArray kReadReply = hex("0103 02 1234 b533");
const QByteArray kWrite = hex("0106 0010 abcd 36aa");  // 16 := ABCD

TEST(SimulatedLine, ServesEveryFunctionOfEveryStation) {
    const auto line = startLine();
    Master master(line->device());
    for (const int station : {1, 2, 247}) {
        SCOPED_TRACE(station);
        modbus_t *client = master.at(station);
        const auto value = static_cast<std::uint16_t>(station * 100);
        line->setHoldingRegister(station, 65535, value);
        line->setCoil(station, 65535, true);
        std::uint16_t words[2] = {};
        std::uint8_t bits[3] = {};
        EXPECT_EQ(modbus_read_registers(client, 65534, 2, words), 2);
        EXPECT_EQ(words[1], value);
        EXPECT_EQ(modbus_read_bits(client, 65533, 3, bits), 3);
        EXPECT_EQ(bits[1] * 2 + bits[2], 1);

        const std::uint16_t written[2] = {value, 0xBEEF};
        const std::uint8_t coils[3] = {1, 0, 1};
        EXPECT_EQ(modbus_write_register(client, 8000, value), 1);
        EXPECT_EQ(modbus_write_registers(client, 50000, 2, written), 2);
        EXPECT_EQ(modbus_write_bit(client, 1200, 1), 1);
        EXPECT_EQ(modbus_write_bits(client, 31000, 3, coils), 3);
        EXPECT_EQ(line->holdingRegister(station, 8000), value);
        EXPECT_EQ(line->holdingRegister(station, 50001), 0xBEEF);
        EXPECT_TRUE(line->coil(station, 1200));
        EXPECT_TRUE(line->coil(station, 31002));
        EXPECT_FALSE(line->coil(station, 31001));
    }
    EXPECT_EQ(line->holdingRegister(2, 8000), 200);
}

TEST(SimulatedLine, BroadcastReachesAllAndIsNotAnswered) {
    const auto line = startLine();
    Master master(line->device());
    for (int round = 0; round < 20; ++round) {
        line->setHoldingRegister(2, 16, 0);
        master.send(hex("0006 0010 abcd 377b"));
        EXPECT_EQ(modbus_write_register(master.at(1), 17, 5), 1);  // served after the broadcast, which is then done
        for (const int station : {1, 2, 247}) {
            EXPECT_EQ(line->holdingRegister(station, 16), 0xABCD) << station;
        }
    }
    EXPECT_EQ(master.receive(1, kNothing), QByteArray());
}

struct FrameCase {
    const char *name;
    QByteArray request;
    QByteArray reply;  // empty: none comes
};

void expectAnswer(Master &master, const FrameCase &c) {
    const QByteArray got =
        c.reply.isEmpty() ? master.ask(c.request, 1, kNothing) : master.ask(c.request, c.reply.size());
    EXPECT_EQ(got.toHex().toStdString(), c.reply.toHex().toStdString()) << c.name;
}

TEST(SimulatedLine, AnswersAsAControllerDoesWhateverArrives) {
    const FrameCase cases[] = {
        {"read", kRead, kReadReply},
        {"no such station", hex("0303 0010 0001 842d"), ""},
        {"wrong CRC", hex("0103 0010 0001 85ce"), ""},
        {"half a request", hex("0103 0010"), ""},
        {"noise", hex("ff00ff00ff00ff"), ""},
        {"function 0", hex("0100 0000 01d8"), hex("0180 01 8000")},
        {"past the end of the registers", hex("0103 ffff 0002 c42f"), hex("0183 02 c0f1")},
        {"quantity 0", hex("0103 0010 0000 440f"), hex("0183 03 0131")},
        {"byte count short of the data", hex("0110 0010 0001 01 1234 59b7"), hex("0190 03 0c01")},
        {"125 registers, too many for a frame", hex("0110 0000 007d fa") + QByteArray(250, '\0') + hex("4079"),
         hex("0190 03 0c01")},
        {"write", kWrite, kWrite},
    };
    const auto line = startLine();
    line->setHoldingRegister(1, 16, 0x1234);
    Master master(line->device());
    for (const FrameCase &c : cases) {
        expectAnswer(master, c);
    }
    EXPECT_EQ(line->holdingRegister(1, 16), 0xABCD);
}

int differingBits(const QByteArray &a, const QByteArray &b) {
    int bits = 0;
    for (int i = 0; i < a.size() && i < b.size(); ++i) {
        for (int bit = 0; bit < 8; ++bit) {
            bits += ((a.at(i) ^ b.at(i)) >> bit) & 1;
        }
    }
    return bits;
}

struct FaultCase {
    const char *name;
    FaultKind kind;
    int size;  // of the reply; 0: none, -1: any
    std::function<bool(const QByteArray &)> asItShouldBe;
};

TEST(SimulatedLineFaults, EachChangesTheReplyInItsOwnWayOnly) {
    const FaultCase cases[] = {
        {"noreply", FaultKind::NoReply, 0, [](const QByteArray &) { return true; }},
        {"truncated", FaultKind::Truncated, -1,
         [](const QByteArray &r) { return r.size() < kReadReply.size() && kReadReply.startsWith(r); }},
        {"flip", FaultKind::FlippedBit, 7, [](const QByteArray &r) { return differingBits(r, kReadReply) == 1; }},
        {"wrongstation", FaultKind::WrongStation, 7,
         [](const QByteArray &r) { return r.at(0) != 1 && r.mid(1, 4) == kReadReply.mid(1, 4); }},
        {"stray", FaultKind::StrayByte, 8, [](const QByteArray &r) { return r.mid(1) == kReadReply; }},
        {"exception", FaultKind::ExceptionReply, 5,
         [](const QByteArray &r) { return r.startsWith(hex("0183")) && r.at(2) >= 1 && r.at(2) <= 4; }},
    };
    for (const FaultCase &c : cases) {
        SCOPED_TRACE(c.name);
        const auto line = startLine([&c](SimulatedLineOptions &options) {
            QString error;
            EXPECT_TRUE(parseFaults(QString::fromLatin1(c.name) + QLatin1String("=1"), options, &error));
        });
        line->setHoldingRegister(1, 16, 0x1234);
        Master master(line->device());
        for (int round = 1; round <= 5; ++round) {
            const QByteArray reply = c.size > 0 ? master.ask(kRead, c.size) : master.ask(kRead, 1, kNothing);
            EXPECT_TRUE(c.size < 0 ? !reply.isEmpty() : reply.size() == c.size) << reply.toHex().constData();
            EXPECT_TRUE(c.asItShouldBe(reply)) << reply.toHex().constData();
            EXPECT_EQ(line->faultCount(c.kind), static_cast<std::uint64_t>(round));
        }
    }
}

TEST(SimulatedLineFaults, DecideWhetherAWriteIsCarriedOut) {
    struct {
        const char *faults;
        int replySize;
        int fewest, most;  // of 20 writes
    } const cases[] = {{"noreply=1", 0, 1, 19}, {"exception=1", 5, 0, 0}, {"dead=1", 0, 0, 0}, {"flip=1", 8, 20, 20}};
    for (const auto &c : cases) {
        const auto line = startLine([&c](SimulatedLineOptions &options) {
            EXPECT_TRUE(parseFaults(QString::fromLatin1(c.faults), options, nullptr));
        });
        Master master(line->device());
        int done = 0;
        for (int i = 0; i < 20; ++i) {
            line->setHoldingRegister(1, 16, 0);
            c.replySize > 0 ? master.ask(kWrite, c.replySize) : master.ask(kWrite, 1, milliseconds(20));
            done += line->holdingRegister(1, 16) == 0xABCD ? 1 : 0;
        }
        EXPECT_GE(done, c.fewest) << c.faults;
        EXPECT_LE(done, c.most) << c.faults;
    }
}

TEST(SimulatedLineFaults, ADeadStationLeavesTheOthersAlone) {
    const auto line = startLine([](SimulatedLineOptions &options) { options.deadStation = 1; });
    Master master(line->device());
    EXPECT_EQ(master.ask(kRead, 1, kNothing), QByteArray());
    EXPECT_EQ(modbus_write_register(master.at(2), 16, 7), 1);
    EXPECT_EQ(line->faultCount(FaultKind::DeadStation), 1U);
}

TEST(SimulatedLineFaults, ALateReplyIsHeldBack) {
    const auto line = startLine([](SimulatedLineOptions &options) {
        options.faults = {{FaultKind::LateReply, 1.0}};
        options.lateBy = milliseconds(100);
    });
    Master master(line->device());
    const auto asked = std::chrono::steady_clock::now();
    EXPECT_EQ(master.ask(kWrite, 8), kWrite);
    EXPECT_GE(std::chrono::steady_clock::now() - asked, milliseconds(100));
}

TEST(SimulatedLineFaults, NoReplyOvertakesALateOne) {
    for (const double probability : {0.5, 1.0}) {
        const auto line = startLine([probability](SimulatedLineOptions &options) {
            options.faults = {{FaultKind::LateReply, probability}};
            options.lateBy = milliseconds(100);
        });
        Master master(line->device());
        constexpr std::uint8_t kRequests = 10;
        for (std::uint8_t i = 0; i < kRequests; ++i) {  // reads that do not wait for what is late
            line->setHoldingRegister(1, 40 + i, static_cast<std::uint16_t>(0x1100 + i));
            const std::uint8_t read[] = {1, 3, 0, static_cast<std::uint8_t>(40 + i), 0, 1};
            ASSERT_GT(modbus_send_raw_request(master.at(1), read, sizeof read), 0);
        }
        const QByteArray replies = master.receive(kRequests * kReadReply.size());
        ASSERT_EQ(replies.size(), kRequests * kReadReply.size());
        for (int i = 0; i < kRequests; ++i) {
            EXPECT_EQ(replies.at(kReadReply.size() * i + 4), i) << probability;
        }
        EXPECT_EQ(line->faultCount(FaultKind::LateReply) == kRequests, probability == 1.0);
        EXPECT_GE(line->faultCount(FaultKind::LateReply), 1U);
    }
}

TEST(SimulatedLineFaults, TheSameSeedGivesTheSameFaults) {
    const auto repliesWithSeed = [](std::uint32_t seed) {
        const auto line = startLine([seed](SimulatedLineOptions &options) {
            options.seed = seed;
            for (const FaultKind kind : {FaultKind::FlippedBit, FaultKind::WrongStation, FaultKind::StrayByte}) {
                options.faults.push_back({kind, 0.5});
            }
        });
        Master master(line->device());
        QByteArray all;
        for (int i = 0; i < 30; ++i) {
            all += master.ask(kRead, 7) + '|';
        }
        return all.toHex().toStdString();
    };
    EXPECT_EQ(repliesWithSeed(3), repliesWithSeed(3));
    EXPECT_NE(repliesWithSeed(3), repliesWithSeed(4));
}

// --- remote frames ---

/// Host's identifier 5, node 9, station 1, both parameters 0.
QByteArray remoteFrame(int type, int address, int count, const QByteArray &data, char station = 1) {
    QByteArray frame;
    frame.append(static_cast<char>(22 + data.size())).append('\x05').append(data.isEmpty() ? '\0' : '\1');
    frame.append('\x09').append(station).append('\0').append(static_cast<char>(type));
    for (int shift = 24; shift >= 0; shift -= 8) {
        frame.append(static_cast<char>(address >> shift));
    }
    frame.append(static_cast<char>(count >> 8)).append(static_cast<char>(count)).append(8, '\0').append(data);
    unsigned sum = 0;
    for (const char byte : frame) {
        sum += static_cast<unsigned char>(byte);
    }
    return frame.append(static_cast<char>(sum));
}

std::unique_ptr<SimulatedLine> startRemoteLine() {
    return startLine([](SimulatedLineOptions &options) { options.remoteNode = 9; });
}

TEST(SimulatedLineRemote, AnswersInTheStatedForm) {
    const QByteArray write = hex("18050102010007000000640001000000000000000034 12d3");
    const FrameCase cases[] = {
        {"read two", hex("16050002010007000000640002000000000000000 08b"), hex("0103 04 1234 5678 8107")},
        {"read one coil", remoteFrame(1, 5, 3, ""), hex("0101 01 05 91 8b")},
        {"wrong sum", hex("160500020100070000006400020000000000000000 8c"), ""},
        {"length byte off by one", hex("170500020100070000006400020000000000000000 8c"), ""},
        {"no such station", remoteFrame(7, 100, 2, "", 3), ""},
        {"no such type", remoteFrame(22, 0, 1, ""), hex("0183 02 c0f1")},
        {"past the end", remoteFrame(7, 23536, 1, ""), hex("0183 02 c0f1")},
        {"below the beginning", remoteFrame(7, -1, 1, ""), hex("0183 02 c0f1")},
        {"Modbus on the same line", kRead, hex("0103 02 0000 b844")},
        {"write", write, hex("0106 0064 0001 09d5")},
    };
    const auto line = startRemoteLine();
    line->setHoldingRegister(1, 100, 0x1234);
    line->setHoldingRegister(1, 101, 0x5678);
    line->setCoil(1, 5, true);
    line->setCoil(1, 7, true);
    Master master(line->device());
    for (const FrameCase &c : cases) {
        expectAnswer(master, c);
    }
    EXPECT_EQ(line->holdingRegister(1, 100), 0x1234);
    EXPECT_EQ(startLine()->holdingRegister(1, 100), 0);
}

struct PlaceCase {
    int type;
    int address;
    int first;  // Modbus address of the first coil or register
};

TEST(SimulatedLineRemote, FindsEveryTypeAtBothSidesOfItsBound) {
    const PlaceCase cases[] = {
        {0, 0, 1200},     {0, 7, 1207},    {1, 9, 9},        {2, 2047, 4047},  {2, 2048, 12000},  {3, 255, 4655},
        {3, 256, 30000},  {4, 1023, 7023}, {4, 1024, 31000}, {5, 255, 8255},   {5, 256, 11000},   {6, 255, 9455},
        {6, 256, 10000},  {7, 7999, 7999}, {7, 8000, 50000}, {8, 255, 8255},   {8, 256, 12000},   {9, 255, 9255},
        {9, 256, 11000},  {10, 3, 9503},   {11, 3, 8503},    {12, 7998, 7998}, {12, 8000, 50000}, {13, 255, 9810},
        {13, 256, 10000}, {14, 254, 8254}, {14, 256, 12000}, {18, 4, 8504},    {19, 300, 13300},  {21, 2, 13002},
    };
    const auto line = startRemoteLine();
    Master master(line->device());
    for (const PlaceCase &c : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.type << " address " << c.address);
        const bool coil = c.type <= 6;
        const bool pair = c.type == 12 || c.type == 13 || c.type == 14 || c.type == 18 || c.type == 21;
        const QByteArray data = coil ? hex("01") : hex(pair ? "78563412" : "3412");
        EXPECT_EQ(master.ask(remoteFrame(c.type, c.address, 1, data), 8).size(), 8);
        if (coil) {
            EXPECT_TRUE(line->coil(1, c.first));
            EXPECT_EQ(master.ask(remoteFrame(c.type, c.address, 1, ""), 6).mid(1, 3), hex("010101"));
            continue;
        }
        EXPECT_EQ(line->holdingRegister(1, c.first), 0x1234);
        EXPECT_EQ(line->holdingRegister(1, c.first + 1), pair ? 0x5678 : 0);
        const bool words = pair && c.type != 13;  // their reads count words
        EXPECT_EQ(master.ask(remoteFrame(c.type, c.address, words ? 2 : 1, ""), pair ? 9 : 7).mid(3, pair ? 4 : 2),
                  hex(pair ? "12345678" : "1234"));
        line->setHoldingRegister(1, c.first, 0);
        line->setHoldingRegister(1, c.first + 1, 0);
    }
}

TEST(SimulatedLineRemote, WritesOnlyTheNamedBitsOfAWord) {
    struct {
        int type, address, first;
    } const cases[] = {{15, 16 * 8000 + 14, 50000}, {16, 16 * 300 + 14, 12044}, {17, 14, 8500}, {20, 30, 13001}};
    const auto line = startRemoteLine();
    Master master(line->device());
    for (const auto &c : cases) {
        line->setHoldingRegister(1, c.first, 0x8001);
        line->setHoldingRegister(1, c.first + 1, 0x0F00);
        master.ask(remoteFrame(c.type, c.address, 4, hex("01000001")), 8);  // bits 14 and 15, then 0 and 1 of the next
        EXPECT_EQ(line->holdingRegister(1, c.first), 0x4001) << c.type;
        EXPECT_EQ(line->holdingRegister(1, c.first + 1), 0x0F02) << c.type;
        EXPECT_EQ(master.ask(remoteFrame(c.type, c.address, 2, ""), 9).mid(3, 4), hex("40010f02")) << c.type;
    }
}

TEST(SimulatedLineRemote, BroadcastAndLongFrames) {
    const auto line = startRemoteLine();
    Master master(line->device());
    master.send(remoteFrame(7, 8, 1, hex("3412"), 0));
    EXPECT_EQ(master.ask(remoteFrame(7, 100, 150, QByteArray(300, '\x11')), 8).size(), 8);
    EXPECT_EQ(line->holdingRegister(247, 8), 0x1234);
    EXPECT_EQ(line->holdingRegister(1, 249), 0x1111);
    EXPECT_EQ(line->holdingRegister(1, 250), 0);
    EXPECT_EQ(master.ask(remoteFrame(7, 100, 150, ""), 305).size(), 305);
}

// --- the line itself ---

TEST(SimulatedLine, TwoMastersTakeTurns) {
    const auto line = startLine();
    const auto readMuch = [&line](const std::string &device, int station) {
        Master master(device);
        line->setHoldingRegister(station, 40, static_cast<std::uint16_t>(station));
        for (int i = 0; i < 200; ++i) {
            std::uint16_t word = 0;
            EXPECT_EQ(modbus_read_registers(master.at(station), 40, 1, &word), 1) << modbus_strerror(errno);
            EXPECT_EQ(word, station);
        }
    };
    std::thread other(readMuch, line->secondDevice(), 2);
    readMuch(line->device(), 1);
    other.join();
}

TEST(SimulatedLine, OutlivesAMasterThatComesAndGoes) {
    const auto line = startLine();
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(Master(line->device()).ask(kWrite, 8), kWrite);
    }
}

std::size_t openDescriptors() {
    const auto all = std::filesystem::directory_iterator("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

TEST(SimulatedLine, LeavesNothingOpen) {
    const std::size_t before = openDescriptors();
    for (int i = 0; i < 3; ++i) {
        const auto line = startLine();
        Master(line->secondDevice()).ask(kWrite, 8);
        EXPECT_GT(openDescriptors(), before);
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(SimulatedLine, ValuesMoveButWrittenOnesStay) {
    const auto line = startLine([](SimulatedLineOptions &options) { options.moving = true; });
    line->setHoldingRegister(1, 99, 77);
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    const std::uint16_t before = line->holdingRegister(1, 102);
    while (line->holdingRegister(1, 102) == before && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(milliseconds(10));
    }
    EXPECT_NE(line->holdingRegister(1, 102), before);
    EXPECT_EQ(line->holdingRegister(1, 99), 77);
}

TEST(SimulatedLineOptions, RefusesWhatNoLineCanBe) {
    struct {
        const char *error;
        std::function<void(SimulatedLineOptions &)> change;
    } const cases[] = {
        {"at least one", [](SimulatedLineOptions &o) { o.stations.clear(); }},
        {"1 to 247", [](SimulatedLineOptions &o) { o.stations = {248}; }},
        {"1 to 247", [](SimulatedLineOptions &o) { o.stations = {0}; }},
        {"named twice",
         [](SimulatedLineOptions &o) {
             o.stations = {5, 5};
         }},
        {"dead station 4", [](SimulatedLineOptions &o) { o.deadStation = 4; }},
        {"baud", [](SimulatedLineOptions &o) { o.baud = 0; }},
        {"remote node", [](SimulatedLineOptions &o) { o.remoteNode = 256; }},
        {"probability",
         [](SimulatedLineOptions &o) {
             o.faults = {{FaultKind::NoReply, 1.5}};
         }},
    };
    for (const auto &c : cases) {
        SimulatedLineOptions options;
        options.stations = {1};
        c.change(options);
        std::string error;
        EXPECT_EQ(SimulatedLine::start(options, &error), nullptr) << c.error;
        EXPECT_NE(error.find(c.error), std::string::npos) << error;
    }
}

TEST(SimulatedLineOptions, FaultListsAreTakenWholeOrNotAtAll) {
    SimulatedLineOptions options;
    QString error;
    ASSERT_TRUE(parseFaults(QStringLiteral("noreply=0.1, stray=1,dead=247,seed=4294967295"), options, &error));
    ASSERT_EQ(options.faults.size(), 2U);
    EXPECT_EQ(options.faults[1].kind, FaultKind::StrayByte);
    EXPECT_EQ(options.faults[0].probability, 0.1);
    EXPECT_EQ(options.deadStation, 247);
    EXPECT_EQ(options.seed, 4294967295U);

    const char *const bad[] = {"noreply", "noreply=", "noreply=1.01", "noreply=-0.1",  "noreply=nan", "flop=0.1",
                               "dead=0",  "dead=248", "seed=-1",      "late=0,late=0", "late=0,",     "=1"};
    for (const char *text : bad) {
        error.clear();
        EXPECT_FALSE(parseFaults(QString::fromLatin1(text), options, &error)) << text;
        EXPECT_FALSE(error.isEmpty()) << text;
    }
    EXPECT_EQ(options.faults.size(), 2U);
    EXPECT_FALSE(parseFaults(QStringLiteral("flip=2,dead=x,stray=0.5"), options, &error));
    EXPECT_TRUE(error.contains(QLatin1String("flip=2")) && error.contains(QLatin1String("dead=x")))
        << qPrintable(error);
    EXPECT_FALSE(error.contains(QLatin1String("stray")));
}

}  // namespace
