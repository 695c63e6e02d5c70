// dravo-host on lines that fail: no wrong value is shown, a lost device is opened again, and the exit status tells.
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "e2e/program.h"
#include "host/simulation/simulated_line.h"

namespace {

class MonitoredLine : public ::testing::Test {
protected:
    void start() {
        line.reset();
        const simulation::Failure failure = SimulatedLine::start(options, &line);
        ASSERT_FALSE(failure) << failure.text();
        QFile::remove(device);
        ASSERT_TRUE(QFile::link(QString::fromStdString(line->device()), device));
    }
    // Register n of a station holds the station and n.
    QStringList monitor(const QString &port) {
        QFile tags(folder.filePath("tags.csv"));
        EXPECT_TRUE(tags.open(QIODevice::WriteOnly));
        tags.write("label,type,address,station,count\n");
        for (const int station : options.stations) {
            for (int address = 0; address < 8; ++address) {
                line->setHoldingRegister(station, address * 100, quint16(station * 1000 + address));
                tags.write(
                    QString("%1,7,%2,%3,1\n").arg(station * 1000 + address).arg(address * 100).arg(station).toUtf8());
            }
        }
        return {"monitor", "--port", port, "--tags", tags.fileName(), "--format", "csv", "--timeout", "100"};
    }

    MonitoredLine() {
        options.stations = {1, 2, 3};
        options.moving = false;
    }

    // How many show a fresh value. None shows a wrong one, and of the dead station none.
    int goodRows(const QString &records) const {
        int good = 0;
        for (const QString &row : records.split('\n').mid(1)) {
            const QStringList fields =
                row.split(',');  // 2: the value as it is, 5: station, 6: state, 8: as it is shown
            EXPECT_TRUE(fields.size() < 9 || fields.at(8) == "-" || fields.at(8) == fields.at(2)) << row.toStdString();
            EXPECT_TRUE(fields.value(5).toInt() != options.deadStation || row.isEmpty() ||
                        fields.value(6) == "station down")
                << row.toStdString();
            good += fields.value(6) == "fresh" ? 1 : 0;
        }
        return good;
    }

    QTemporaryDir folder;
    SimulatedLineOptions options;
    const QString device = folder.filePath("line");
    std::unique_ptr<SimulatedLine> line;
};

TEST_F(MonitoredLine, ShowsNoWrongValueWhateverFails) {
    options.deadStation = 3;
    options.seed = 20;
    options.lateBy = std::chrono::milliseconds(140);  // of 100 to 300
    for (const FaultKind kind : {FaultKind::NoReply, FaultKind::LateReply, FaultKind::Truncated, FaultKind::FlippedBit,
                                 FaultKind::WrongStation, FaultKind::StrayByte, FaultKind::ExceptionReply}) {
        options.faults.push_back({kind, 0.03});
    }
    start();
    Program program(monitor(device) + QStringList{"--seconds", "12"});
    EXPECT_GT(goodRows(program.output()), 100);
    EXPECT_EQ(program.exitCode(), 1);
}

TEST_F(MonitoredLine, IsOpenedAgainOnceItIsBack) {
    start();
    Program patient(monitor(device) + QStringList{"--period", "100"});
    Program impatient(monitor(QString::fromStdString(line->secondDevice())) +
                      QStringList{"--period", "100", "--give-up"});
    ASSERT_TRUE(patient.says(QProcess::StandardOutput, ",fresh,"));
    ASSERT_TRUE(impatient.says(QProcess::StandardOutput, "\n9,"));
    line.reset();
    EXPECT_TRUE(patient.says(QProcess::StandardError, "the line is lost"));
    EXPECT_GT(goodRows(impatient.output()), 0) << "two masters took turns";
    EXPECT_EQ(impatient.exitCode(), 1);
    patient.readAllStandardOutput();
    start();
    line->setHoldingRegister(1, 0, 4321);
    EXPECT_TRUE(patient.says(QProcess::StandardError, "open again"));
    EXPECT_TRUE(patient.says(QProcess::StandardOutput, ",4321,"));
    patient.end();
    EXPECT_EQ(patient.exitCode(), 1) << "the line was lost for a while";
}

TEST(Program, EndsWithTheStatusOfWhatWentWrong) {
    const auto status = [](const QStringList &arguments) {
        Program program(arguments);
        program.output();
        return program.exitCode();
    };
    EXPECT_EQ(status({"write", "7", "100", "1", "--faults", "dead=1", "--timeout", "20"}), 1);
    EXPECT_EQ(status({"monitor", "--faults", "dead=2", "--timeout", "20", "--passes", "3"}), 1);
    EXPECT_EQ(status({"read", "7", "12x"}), 2);
    EXPECT_EQ(status({"read", "7", "1", "--port", "/nowhere"}), 3);
    EXPECT_EQ(status({"read", "7", "1", "--faults", "dead=4"}), 3) << "there is no station 4";
    Program moving({"monitor", "--passes", "9", "--format", "csv"});
    QStringList ramp =
        moving.output().split('\n').filter("oven ramp,7,100,1").replaceInStrings(QRegExp(".*fresh,\\d+,"), "");
    ramp.removeDuplicates();
    EXPECT_GT(ramp.size(), 2) << ramp.join(' ').toStdString();
    QProcess unheard;
    unheard.setStandardOutputFile("/dev/full");
    unheard.start(DRAVO_HOST_PROGRAM, {"--version"});
    EXPECT_TRUE(unheard.waitForFinished() && unheard.exitCode() == 1);
}

}  // namespace
