// dravo-host on lines that fail: no wrong value is shown, a lost device is opened again, and the exit status tells.
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "e2e/program.h"

namespace {

TEST(Monitor, ShowsNoWrongValueAndOpensTheLineAgainOnceItIsBack) {
    SimulatedLineOptions options;
    options.moving = false;
    options.stations = {1, 2, 3};
    options.deadStation = 3;
    options.lateBy = std::chrono::milliseconds(140);  // of 100 to 300
    options.faults = {{FaultKind::LateReply, 0.03}, {FaultKind::FlippedBit, 0.03}, {FaultKind::WrongStation, 0.03}};
    auto line = startLine(options);
    QByteArray rows;
    for (int i = 0; i < 9; ++i) {
        line->setHoldingRegister(1 + i % 3, i * 100, quint16(i));
        rows += QString("%1,7,%2,%3,1\n").arg(i).arg(i * 100).arg(1 + i % 3).toUtf8();
    }
    const TagFile tags(rows);
    const QTemporaryDir folder;
    const QString device = folder.filePath("line");
    ASSERT_TRUE(QFile::link(line->device().c_str(), device));
    const QStringList monitor = {"monitor", "--format", "csv", "--timeout", "100", "--tags", tags.fileName()};
    Program patient(monitor + QStringList{"--period", "100", "--port", device});
    Program impatient(monitor + QStringList{"--give-up", "--port", line->secondDevice().c_str()});
    EXPECT_TRUE(patient.says(QProcess::StandardOutput, ",fresh,"));
    EXPECT_TRUE(impatient.says(QProcess::StandardOutput, "\n3,"));
    line.reset();
    EXPECT_TRUE(patient.says(QProcess::StandardError, "went away; unplugged?"));
    const QStringList fresh = impatient.output().split('\n').filter(",fresh,");
    EXPECT_FALSE(fresh.isEmpty()) << "two masters take turns";
    for (const QString &row : fresh) {  // of a living station, and the value is the label
        EXPECT_TRUE(QRegExp("\\d+,[^,]*,(\\d+),7,\\1(00)?,[12],fresh,\\d+,\\1,,,\\1,").exactMatch(row))
            << row.toStdString();
    }
    EXPECT_EQ(impatient.exitCode(), 1);
    patient.readAllStandardOutput();
    EXPECT_TRUE(patient.says(QProcess::StandardError, "there is no such device"));
    line = startLine(options);
    line->setHoldingRegister(1, 0, 4321);
    EXPECT_TRUE(QFile::remove(device) && QFile::link(line->device().c_str(), device));
    EXPECT_TRUE(patient.says(QProcess::StandardError, "open again"));
    EXPECT_TRUE(patient.says(QProcess::StandardOutput, ",4321,"));
    patient.terminate();
    EXPECT_TRUE(patient.waitForFinished());
    EXPECT_EQ(patient.exitCode(), 1) << "the line was lost for a while";
}

TEST(Monitor, TakesKeysOnATerminalAndGivesItBack) {
    QProcess terminal;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TERM", "xterm-256color");
    terminal.setProcessEnvironment(environment);
    terminal.start("script", {"-qefc", "stty rows 24 cols 80; exec " DRAVO_HOST_PROGRAM " monitor", "/dev/null"});
    QByteArray shown;
    const auto shows = [&](const QByteArray &text) {
        while (!shown.contains(text) && terminal.waitForReadyRead(10000)) {
            shown += terminal.readAll();
        }
        return shown.contains(text);
    };
    EXPECT_TRUE(shows("1 of 23") && shows("fresh")) << shown.toStdString();
    terminal.write("/mixer\rw");
    EXPECT_TRUE(shows("write mixer speed: type 11, address 0, station 1, 1 value")) << shown.toStdString();
    terminal.write("987\r");
    EXPECT_TRUE(shows("mixer speed is written")) << shown.toStdString();
    terminal.write("q");
    EXPECT_TRUE(shows("\x1b[?1049l") && terminal.waitForFinished());
    EXPECT_EQ(terminal.exitCode(), 0);
}

TEST(Program, EndsWithTheStatusOfWhatWentWrong) {
    const auto status = [](const QString &arguments) {
        Program program(arguments.split(' '));
        program.output();
        return program.exitCode();
    };
    EXPECT_EQ(status("write 7 100 1 --faults dead=1 --timeout 20"), 1);
    EXPECT_EQ(status("monitor --faults dead=2 --timeout 20 --seconds 1"), 1);
    EXPECT_EQ(status("read 7 12x"), 2);
    EXPECT_EQ(status("read 7 1 --port /nowhere"), 3);
    EXPECT_EQ(status("scan --stations 3-5 --baud 19200 --parity even --timeout 20 --faults dead=3"), 1);
    EXPECT_EQ(status("read 7 1 --faults dead=4"), 2) << "there is no station 4";
    EXPECT_EQ(status("plan --faults dead=4"), 2) << "there is no station 4";
    EXPECT_EQ(status("ports"), 0);
    QProcess unheard;
    unheard.setStandardOutputFile("/dev/full");
    unheard.start(DRAVO_HOST_PROGRAM, {"--version"});
    EXPECT_TRUE(unheard.waitForFinished() && unheard.exitCode() == 1);
}

}  // namespace
