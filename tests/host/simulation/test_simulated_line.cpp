// The simulated line as a master sees it, byte by byte: what its stations answer, and that a fault is what it says.
#include "host/simulation/simulated_line.h"

#include <gtest/gtest.h>

#include <QtSerialPort/QSerialPort>

#include "support/frame_text.h"
#include "support/table.h"

namespace {

constexpr std::chrono::milliseconds kLateBy{40};

/// A line with these faults, and its first device.
class Line : public QSerialPort {
public:
    explicit Line(const QString &faults = QString(), bool paced = false, bool anySettings = false) {
        SimulatedLineOptions options;
        options.anySettings = anySettings;
        options.stations = {1, 2, 247};
        options.lateBy = kLateBy;
        options.remoteNode = 9;
        options.paced = paced;
        EXPECT_TRUE(parseFaults(faults, &options).isEmpty() && !SimulatedLine::start(options, &simulated));
        setPortName(QString::fromStdString(simulated->device()));
        EXPECT_TRUE(setBaudRate(options.baud) && open(ReadWrite));
    }
    /// What arrives until size bytes are there; a size of 0 gives the line some time to stay silent.
    QByteArray ask(const QByteArray &request, int size) {
        write(request);
        flush();
        QByteArray got;
        while ((size == 0 || got.size() < size) && waitForReadyRead(size == 0 ? 60 : 2000)) {
            got += readAll();
        }
        return got;
    }

    std::unique_ptr<SimulatedLine> simulated;
};

TEST(SimulatedLine, AnswersAsAControllerDoesWhateverArrives) {
    Line line("refuse=1:300-319,refuse=2:7");
    // The reply stands without its CRC, empty when none comes.
    for (const TableRow &row : table(R"(
        name                   | request                                                        | reply
        broadcast              | 0006 0010 abcd 377b                                            |
        it reached station 1   | 0103 0010 0001 85cf                                            | 0103 02 abcd
        and 2                  | 0203 0010 0001 85fc                                            | 0203 02 abcd
        function 0             | 0100 0000 01d8                                                 | 0180 01
        byte count short       | 0110 0010 0001 01 1234 59b7                                    | 0190 03
        wrong CRC              | 0103 0010 0001 85ce                                            |
        noise                  | ff00ff00ff00ff                                                 |
        remote broadcast       | 18 05 01 09 00 0007 00000008 0001 0000000000000000 7856 05     |
        it reached station 2   | 16 05 00 09 02 0007 00000008 0001 0000000000000000 36          | 0203 02 5678
        remote, past the end   | 16 05 00 09 01 0007 00005bf0 0001 0000000000000000 78          | 0183 02
        remote, address -1     | 16 05 00 09 01 0007 ffffffff 0001 0000000000000000 29          | 0183 02
        remote, wrong sum      | 16 05 00 02 01 0007 00000000 0002 0000000000000000 28          |
        remote, forbidden      | 16 05 00 09 01 0007 0000012c 0001 0000000000000000 5a          | 0183 02
        remote, wrong length   | 17 05 00 02 01 0007 00000000 0002 0000000000000000 28          |)")) {
        const QByteArray reply = row.empty("reply") ? QByteArray() : withCrc(row["reply"]);
        EXPECT_EQ(line.ask(bytes(row["request"]), reply.size()), reply) << row.line();
    }
    const QByteArray longWrite = bytes("42 05 01 09 01 0007 00000064 0096 0000000000000000") + QByteArray(300, '\x11');
    EXPECT_EQ(line.ask(longWrite + char(0x3f), 8), withCrc("0106 0064 0096"));
    EXPECT_EQ(line.simulated->holdingRegister(1, 249), 0x1111);
    for (const char *refused : {"0103 012a 0003", "0101 013f 07d0", "0106 013f ffff", "0210 0007 0001 02 1234"}) {
        const QByteArray reply = line.ask(withCrc(refused), 5);
        EXPECT_EQ(reply, withCrc(bytes(refused).left(1) + char(bytes(refused).at(1) | 0x80) + '\2')) << refused;
    }
    for (const char *taken : {"0106 012b ffff", "0106 0140 ffff", "0105 012b ff00", "0206 012c ffff"}) {
        EXPECT_EQ(line.ask(withCrc(taken), 8), withCrc(taken));
    }
    EXPECT_LT(line.simulated->holdingRegister(1, 8500), 930) << "the ramp falls";
}

TEST(SimulatedLine, HearsOnlyWhoHasItsSettings) {
    Line line;
    const QByteArray reply = withCrc("0103 02 0000");
    EXPECT_EQ(line.ask(withCrc("0103 0010 0001"), reply.size()), reply);
    EXPECT_TRUE(line.setParity(QSerialPort::OddParity));
    EXPECT_TRUE(line.ask(withCrc("0103 0010 0001"), 0).isEmpty());
    EXPECT_TRUE(line.setParity(QSerialPort::EvenParity) && line.setBaudRate(250000));
    EXPECT_TRUE(line.ask(withCrc("0103 0010 0001"), 0).isEmpty());
    EXPECT_TRUE(line.setBaudRate(19200));
    EXPECT_EQ(line.ask(withCrc("0103 0010 0001"), reply.size()), reply);
    Line open(QString(), false, true);
    EXPECT_TRUE(open.setParity(QSerialPort::OddParity) && open.setBaudRate(50));
    EXPECT_EQ(open.ask(withCrc("0103 0010 0001"), reply.size()), reply);
}

TEST(SimulatedLine, TakesTheTimeOfTheWireAndEchoes) {
    Line line("echo,delay=30", true);
    QSerialPort other(QString::fromStdString(line.simulated->secondDevice()));
    EXPECT_TRUE(other.setBaudRate(19200) && other.open(QSerialPort::ReadWrite));
    const QByteArray request = withCrc("0103 0010 0014");
    const QByteArray answer = request + withCrc(bytes("0103 28") + QByteArray(40, '\0'));
    const auto asked = std::chrono::steady_clock::now();
    other.write(request);
    other.flush();
    EXPECT_EQ(line.ask(request, answer.size()), answer);
    while (other.bytesAvailable() < answer.size() && other.waitForReadyRead(2000)) {
    }
    EXPECT_EQ(other.readAll(), answer);
    // One after the other 53 characters of 11 bits at 19200, a silence of 3.5, a turnaround of 5 ms and the delay.
    EXPECT_GE(std::chrono::steady_clock::now() - asked, std::chrono::microseconds(2 * 67370));
}

TEST(SimulatedLineFaults, ChangeTheReplyAndTheWriteAsTheirNamesSay) {
    // Of ten writes: how many are carried out, and how each reply reads, with a right CRC or without. Size 1: any.
    for (const TableRow &row : table(R"(
        faults                | kind | size | least | most | crc | reply
        noreply=1,exception=1 | 0    | 0    | 1     | 9    | 0   |
        late=1                | 1    | 8    | 10    | 10   | 1   | 01060010abcd....
        truncated=1           | 2    | 1    | 10    | 10   | 0   | 01(06(00(10(ab(cd(..)?)?)?)?)?)?
        flip=1                | 3    | 8    | 10    | 10   | 0   | .{16}
        wrongstation=1        | 4    | 8    | 10    | 10   | 1   | (?!01)..060010abcd....
        stray=1               | 5    | 9    | 10    | 10   | 0   | ..01060010abcd....
        exception=1           | 6    | 5    | 0     | 0    | 1   | 01860[46]....
        dead=1                | 7    | 0    | 0     | 0    | 0   |)")) {
        SCOPED_TRACE(row.line());
        Line line(row["faults"]);
        int done = 0;
        for (int round = 0; round < 10; ++round) {
            line.simulated->setHoldingRegister(1, 16, 0);
            const auto asked = std::chrono::steady_clock::now();
            const QByteArray reply = line.ask(withCrc("0106 0010 abcd"), row.number("size"));
            EXPECT_TRUE(row.text("faults") != "late=1" || std::chrono::steady_clock::now() - asked >= kLateBy);
            EXPECT_TRUE(QRegExp(row["reply"]).exactMatch(reply.toHex())) << reply.toHex().toStdString();
            EXPECT_EQ(!reply.isEmpty() && reply == withCrc(reply.left(reply.size() - 2)), row.number("crc") == 1);
            done += line.simulated->holdingRegister(1, 16) == 0xABCD ? 1 : 0;
        }
        EXPECT_TRUE(done >= row.number("least") && done <= row.number("most")) << done;
        EXPECT_EQ(line.simulated->faultCount(FaultKind(row.number("kind"))), 10U);
    }
}

TEST(FaultList, IsTakenWholeOrNotAtAll) {
    SimulatedLineOptions options;
    ASSERT_TRUE(
        parseFaults("noreply=0.1, stray=1,dead=247,seed=4294967295,refuse=1:0-65535,refuse=2:7", &options).isEmpty());
    EXPECT_TRUE(options.deadStation == 247 && options.seed == 4294967295U && options.forbidden.size() == 2);
    const QStringList faults = parseFaults(
        "noreply=1.01,late=-0.1,flip=nan,flop=1,dead=248,seed=-1,stray,exception=0,exception=0,,echo=1,delay=60001,"
        "refuse=0:1,refuse=1:2-1,refuse=1:65536,refuse=1",
        &options);
    EXPECT_EQ(faults.size(), 15) << faults.join('\n').toStdString();
    EXPECT_TRUE(faults.value(3).contains("flop=1': there is no such fault; there are noreply, exception, "));
    EXPECT_EQ(options.faults.size(), 2U);
}

}  // namespace
