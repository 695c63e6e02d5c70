// The simulated line as a master sees it, byte by byte: what its stations
// answer, and that a fault is what it says.
#include "host/simulation/simulated_line.h"

#include <gtest/gtest.h>

#include <QtSerialPort/QSerialPort>
#include <functional>
#include <numeric>

#include "support/frame_text.h"
#include "support/table.h"

namespace {

constexpr std::chrono::milliseconds kLateBy{40};

std::unique_ptr<SimulatedLine> startLine(const QString &faults = QString()) {
    SimulatedLineOptions options;
    options.stations = {1, 2, 247};
    options.lateBy = kLateBy;
    options.remoteNode = 9;
    EXPECT_FALSE(parseFaults(faults, &options)) << faults.toStdString();
    std::unique_ptr<SimulatedLine> line;
    const simulation::Failure failure = SimulatedLine::start(options, &line);
    EXPECT_FALSE(failure) << failure.text();
    return line;
}

class Master : public QSerialPort {
public:
    explicit Master(const std::string &device) : QSerialPort(QString::fromStdString(device)) {
        EXPECT_TRUE(open(ReadWrite));
    }
    void send(const QByteArray &request) {
        write(request);
        flush();
    }
    /// What arrives until size bytes are there; a size of 0 gives the line some time to stay silent.
    QByteArray receive(int size) {
        QByteArray got = readAll();
        while ((size == 0 || got.size() < size) && waitForReadyRead(size == 0 ? 60 : 2000)) {
            got += readAll();
        }
        return got;
    }
    QByteArray ask(const QByteArray &request, int replySize) {
        send(request);
        return receive(replySize);
    }
};

QByteArray withSum(const QByteArray &frame) {
    return frame + static_cast<char>(std::accumulate(frame.begin(), frame.end(), 0));
}

// close completes a request; the reply stands without its CRC, empty when none comes.
void expectAnswers(Master &master, const char *text, QByteArray (*close)(const QByteArray &)) {
    for (const TableRow &row : table(text)) {
        const QByteArray reply = row.empty("reply") ? QByteArray() : withCrc(row["reply"]);
        EXPECT_EQ(master.ask(close(bytes(row["request"])), reply.size()), reply) << row.line();
    }
}

TEST(SimulatedLine, AnswersAsAControllerDoesWhateverArrives) {
    const auto line = startLine();
    line->setHoldingRegister(1, 16, 0x1234);
    Master master(line->device());
    expectAnswers(master, R"(
        name                      | request                     | reply
        read a register           | 0103 0010 0001              | 0103 02 1234
        write the last register   | f706 ffff beef              | f706 ffff beef
        write a coil              | 0205 791a ff00              | 0205 791a ff00
        write coils               | 020f 7918 0002 01 01        | 020f 7918 0002
        read coils                | 0201 7918 0004              | 0201 01 05
        write registers           | 0210 c350 0002 04 0102 0304 | 0210 c350 0002
        read registers            | 0203 c350 0002              | 0203 04 0102 0304
        broadcast                 | 0006 0010 abcd              |
        it reached station 1      | 0103 0010 0001              | 0103 02 abcd
        and 2                     | 0203 0010 0001              | 0203 02 abcd
        no such station           | 0303 0010 0001              |
        function 0                | 0100 0000                   | 0180 01
        past the last register    | 0103 ffff 0002              | 0183 02
        quantity 0                | 0103 0010 0000              | 0183 03
        byte count short          | 0110 0010 0001 01 1234      | 0190 03)",
                  &withCrc);
    EXPECT_EQ(line->holdingRegister(247, 65535), 0xBEEF);
    EXPECT_TRUE(line->coil(2, 0x791A));

    expectAnswers(master, R"(
        name                      | request                     | reply
        remote write              | 18 05 01 09 01 0007 00000064 0002 0000000000000000 3412 | 0106 0064 0002
        remote read               | 16 05 00 09 01 0007 00000063 0003 0000000000000000      | 0103 06 0000 1234 0000
        remote broadcast          | 18 05 01 09 00 0007 00000008 0001 0000000000000000 7856 |
        it reached station 2      | 16 05 00 09 02 0007 00000008 0001 0000000000000000      | 0203 02 5678
        remote, no such station   | 16 05 00 09 03 0007 00000008 0001 0000000000000000      |
        remote, no such type      | 16 05 00 09 01 0016 00000000 0001 0000000000000000      | 0183 02
        remote, past the end      | 16 05 00 09 01 0007 00005bf0 0001 0000000000000000      | 0183 02
        remote, address -1        | 16 05 00 09 01 0007 ffffffff 0001 0000000000000000      | 0183 02)",
                  &withSum);
    const QByteArray longWrite = bytes("42 05 01 09 01 0007 00000064 0096 0000000000000000") + QByteArray(300, '\x11');
    EXPECT_EQ(master.ask(withSum(longWrite), 8), withCrc("0106 0064 0096"));
    EXPECT_EQ(line->holdingRegister(1, 249), 0x1111);

    expectAnswers(master, R"(
        name                      | request                     | reply
        remote, sum and all       | 16 05 00 02 01 0007 00000000 0002 0000000000000000 27   | 0103 04 0000 0000
        remote, wrong sum         | 16 05 00 02 01 0007 00000000 0002 0000000000000000 28   |
        remote, wrong length      | 17 05 00 02 01 0007 00000000 0002 0000000000000000 28   |
        wrong CRC                 | 0103 0010 0001 85ce                                     |
        half a request            | 0103 0010                                               |
        noise                     | ff00ff00ff00ff                                          |)",
                  [](const QByteArray &frame) { return frame; });
}

const QByteArray kWrite = withCrc("0106 0010 abcd");

TEST(SimulatedLineFaults, ChangeTheReplyAndTheWriteAsTheirNamesSay) {
    const auto hasItsCrc = [](const QByteArray &r) { return r == withCrc(r.left(r.size() - 2)); };
    const auto differsInOneBit = [](const QByteArray &r) {
        uint bits = 0;
        for (int i = 0; i < r.size(); ++i) {
            bits += qPopulationCount(static_cast<quint8>(r.at(i) ^ kWrite.at(i)));
        }
        return bits == 1;
    };
    const struct {
        const char *name;
        FaultKind kind;
        int size;          // of the reply; 0: none comes; 1: as much as comes
        int fewest, most;  // of ten writes that are carried out
        std::function<bool(const QByteArray &)> isAsNamed;
    } cases[] = {
        {"noreply=1", FaultKind::NoReply, 0, 1, 9, [](auto) { return true; }},
        {"noreply=1,exception=1", FaultKind::NoReply, 0, 1, 9, [](auto) { return true; }},
        {"dead=1", FaultKind::DeadStation, 0, 0, 0, [](auto) { return true; }},
        {"late=1", FaultKind::LateReply, 8, 10, 10, [](auto r) { return r == kWrite; }},
        {"truncated=1", FaultKind::Truncated, 1, 10, 10, [](auto r) { return r.size() < 8 && kWrite.startsWith(r); }},
        {"flip=1", FaultKind::FlippedBit, 8, 10, 10, differsInOneBit},
        {"wrongstation=1", FaultKind::WrongStation, 8, 10, 10,
         [&](auto r) { return hasItsCrc(r) && r.at(0) != 1 && r.mid(1, 5) == kWrite.mid(1, 5); }},
        {"stray=1", FaultKind::StrayByte, 9, 10, 10, [](auto r) { return r.mid(1) == kWrite; }},
        {"exception=1", FaultKind::ExceptionReply, 5, 0, 0,
         [&](auto r) { return hasItsCrc(r) && r.startsWith("\x01\x86") && r.at(2) >= 1 && r.at(2) <= 4; }},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const auto line = startLine(c.name);
        Master master(line->device());
        int done = 0;
        for (int round = 0; round < 10; ++round) {
            line->setHoldingRegister(1, 16, 0);
            const auto asked = std::chrono::steady_clock::now();
            const QByteArray reply = master.ask(kWrite, c.size);
            EXPECT_TRUE(c.kind != FaultKind::LateReply || std::chrono::steady_clock::now() - asked >= kLateBy);
            EXPECT_TRUE(c.size == 1 ? !reply.isEmpty() : reply.size() == c.size) << reply.toHex().toStdString();
            EXPECT_TRUE(c.isAsNamed(reply)) << reply.toHex().toStdString();
            done += line->holdingRegister(1, 16) == 0xABCD ? 1 : 0;
        }
        EXPECT_GE(done, c.fewest);
        EXPECT_LE(done, c.most);
        EXPECT_EQ(line->faultCount(c.kind), 10U);
    }
}

TEST(SimulatedLineFaults, NoReplyOvertakesALateOne) {
    const auto line = startLine("late=0.5,dead=2");
    QByteArray requests;
    QByteArray replies;
    for (char i = 0; i < 10; ++i) {
        line->setHoldingRegister(1, i, static_cast<std::uint16_t>(i));
        requests += withCrc(bytes("0103 00") + i + bytes("0001"));
        replies += withCrc(bytes("0103 02 00") + i);
    }
    EXPECT_EQ(Master(line->device()).ask(requests, replies.size()), replies);
    EXPECT_NE(line->faultCount(FaultKind::LateReply) % 10, 0U) << "none or all were late";
}

TEST(SimulatedLine, TwoMastersTakeTurnsWhileValuesMove) {
    const auto line = startLine();
    line->setHoldingRegister(1, 99, 0x1234);
    line->setHoldingRegister(2, 99, 0x5678);
    const std::uint16_t before = line->holdingRegister(1, 102);
    Master first(line->device());
    Master second(line->secondDevice());
    for (int i = 0; i < 100 || (line->holdingRegister(1, 102) == before && i < 10000); ++i) {
        first.send(withCrc("0103 0063 0001"));
        ASSERT_EQ(second.ask(withCrc("0203 0063 0001"), 7), withCrc("0203 02 5678"));
        ASSERT_EQ(first.receive(7), withCrc("0103 02 1234"));
    }
    EXPECT_NE(line->holdingRegister(1, 102), before);
}

TEST(SimulatedLineOptions, RefuseWhatNoLineCanBe) {
    using Bad = std::tuple<std::vector<int>, int, int>;
    for (const auto &[stations, baud, dead] :
         {Bad({}, 19200, 0), Bad({248}, 19200, 0), Bad({5, 5}, 19200, 0), Bad({1}, 0, 0), Bad({1}, 19200, 4)}) {
        SimulatedLineOptions options;
        options.stations = stations;
        options.baud = baud;
        options.deadStation = dead;
        std::unique_ptr<SimulatedLine> line;
        EXPECT_TRUE(SimulatedLine::start(options, &line)) << testing::PrintToString(stations);
        EXPECT_EQ(line, nullptr);
    }
}

TEST(FaultList, IsTakenWholeOrNotAtAll) {
    SimulatedLineOptions options;
    ASSERT_FALSE(parseFaults("noreply=0.1, stray=1,dead=247,seed=4294967295", &options));
    EXPECT_EQ(options.deadStation, 247);
    EXPECT_EQ(options.seed, 4294967295U);
    for (const char *text : {"noreply", "noreply=", "noreply=1.01", "noreply=-0.1", "noreply=nan", "flop=0.1", "dead=0",
                             "dead=248", "seed=-1", "late=0,late=0", "late=0,", "=1"}) {
        EXPECT_TRUE(parseFaults(text, &options)) << text;
    }
    const std::string failure = parseFaults("flip=2,dead=x,stray=0.5", &options).text();
    EXPECT_NE(failure.find("fault 'flip=2'"), std::string::npos) << failure;
    EXPECT_NE(failure.find("fault 'dead=x'"), std::string::npos) << failure;
    EXPECT_EQ(options.faults.size(), 2U);
}

}  // namespace
