// dravo-host scan on lines with settings of their own: what it finds is what is there, however late the answers are.
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "e2e/program.h"
#include "host/scan/scan_time.h"
#include "host/scan/sweep.h"

namespace {

std::string found(Program *program) {
    QStringList found;
    const QJsonObject result = QJsonDocument::fromJson(program->output().toUtf8()).object();
    for (const QJsonValue finding : result["found"].toArray()) {
        found += QString("%1 %2 %3 %4 %5")
                     .arg(finding["baud"].toInt())
                     .arg(finding["parity"].toString())
                     .arg(finding["station"].toInt())
                     .arg(finding["answer"].toString())
                     .arg(finding["exception_code"].toInt());
    }
    EXPECT_EQ(program->exitCode(), 0);
    return found.join(", ").toStdString();
}

TEST(Scan, FindsTheStationsWithTheirSettingsAndNoOthersTwice) {
    SimulatedLineOptions options;
    options.stations = {2, 3, 247};
    options.baud = 9600;
    options.parity = simulation::Parity::None;
    options.lateBy = std::chrono::milliseconds(90);
    options.faults = {{FaultKind::LateReply, 1}};
    const auto slow = startLine(options);
    options.baud = 250000;
    options.parity = simulation::Parity::Odd;
    options.faults = {{FaultKind::NoReply, 0.2}};
    options.forbidden = {{3, 0, 0}};
    const auto fast = startLine(options);
    const auto scan = [](const std::unique_ptr<SimulatedLine> &line, const QString &what) {
        return ("scan --timeout 60 --start-silence 0 --format json " + what + " --port").split(' ') +
               QStringList{line->device().c_str()};
    };
    const char *const onFast = "250000 odd 2 value 0, 250000 odd 3 exception 2, 250000 odd 247 value 0";
    const QString wide = "--stations 2-4,247 --baud 9600,250000 --parity even,odd,none --retries ";
    for (int run = 1; run <= 2; ++run) {
        Program slowScan(scan(slow, wide + "0"));
        Program fastScan(scan(fast, wide + "2"));
        EXPECT_EQ(found(&slowScan), "9600 none 2 late 0, 9600 none 3 late 0, 9600 none 247 late 0");
        EXPECT_EQ(found(&fastScan), onFast);
    }
    Program stopped(scan(fast, "--stations 2,3,247 --baud 250000,9600 --parity odd --retries 50"));
    EXPECT_TRUE(stopped.says(QProcess::StandardError, "station 2-3,247"));
    stopped.terminate();
    EXPECT_EQ(found(&stopped), onFast) << "the rest takes ten seconds";
    EXPECT_TRUE(stopped.readAllStandardError().contains("1 of 2 settings"));
}

TEST(Scan, AsksAgainWhoDidNotAnswerWhole) {
    Sweep sweep({1, 2, 3}, 2);
    QStringList asked;
    while (const std::optional<int> station = sweep.next()) {
        asked += QString("%1 at %2").arg(*station).arg(qRound(sweep.done() * 6));
        dravo::LineEvent exchange;
        exchange.station = *station;
        exchange.failure = *station == 1   ? dravo::LineEvent::NoAnswer
                           : *station == 2 ? dravo::LineEvent::Refused
                                           : dravo::LineEvent::Damaged;
        sweep.judged(exchange);
    }
    EXPECT_EQ(asked.join(", ").toStdString(), "1 at 1, 2 at 2, 3 at 3, 1 at 4, 3 at 6");
    dravo::LineSettings line;
    line.baud = 9600;
    line.timeoutUs = 100000;
    line.lifetimeUs = 300000;
    EXPECT_EQ(longestSweepUs(line, 1, 2), 931500) << "the same station once in a lifetime";
    EXPECT_EQ(longestSweepUs(line, 10, 1), 1477500);
}

}  // namespace
