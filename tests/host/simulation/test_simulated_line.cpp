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
    explicit Line(const QString &faults = QString()) {
        SimulatedLineOptions options;
        options.stations = {1, 2, 247};
        options.lateBy = kLateBy;
        options.remoteNode = 9;
        EXPECT_FALSE(parseFaults(faults, &options) || SimulatedLine::start(options, &simulated));
        setPortName(QString::fromStdString(simulated->device()));
        EXPECT_TRUE(open(ReadWrite));
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
    Line line;
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
        remote, wrong length   | 17 05 00 02 01 0007 00000000 0002 0000000000000000 28          |)")) {
        const QByteArray reply = row.empty("reply") ? QByteArray() : withCrc(row["reply"]);
        EXPECT_EQ(line.ask(bytes(row["request"]), reply.size()), reply) << row.line();
    }
    const QByteArray longWrite = bytes("42 05 01 09 01 0007 00000064 0096 0000000000000000") + QByteArray(300, '\x11');
    EXPECT_EQ(line.ask(longWrite + char(0x3f), 8), withCrc("0106 0064 0096"));
    EXPECT_EQ(line.simulated->holdingRegister(1, 249), 0x1111);
    EXPECT_LT(line.simulated->holdingRegister(1, 8500), 930) << "the ramp falls";
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
        exception=1           | 6    | 5    | 0     | 0    | 1   | 01860[1-4]....
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
    ASSERT_FALSE(parseFaults("noreply=0.1, stray=1,dead=247,seed=4294967295", &options));
    EXPECT_TRUE(options.deadStation == 247 && options.seed == 4294967295U);
    const simulation::Failure failure =
        parseFaults("noreply=1.01,late=-0.1,flip=nan,flop=1,dead=248,seed=-1,stray,exception=0,exception=0,", &options);
    EXPECT_EQ(QString::fromStdString(failure.text()).count("fault '"), 9) << failure.text();
    EXPECT_EQ(options.faults.size(), 2U);
}

}  // namespace
