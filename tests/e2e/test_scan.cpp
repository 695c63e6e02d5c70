// dravo-host scan on lines with settings of their own: what it finds is what is there, however late the answers are.
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "e2e/program.h"

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
    const QStringList scan = QString(
                                 "scan --timeout 60 --stations 2-4,247 --baud 9600,250000 --parity even,odd,none "
                                 "--start-silence 0 --format json --port")
                                 .split(' ');
    for (int run = 1; run <= 2; ++run) {
        Program onSlow(scan + QStringList{slow->device().c_str(), "--retries", "0"});
        Program onFast(scan + QStringList{fast->device().c_str(), "--retries", "2"});
        EXPECT_EQ(found(&onSlow), "9600 none 2 late 0, 9600 none 3 late 0, 9600 none 247 late 0");
        EXPECT_EQ(found(&onFast), "250000 odd 2 value 0, 250000 odd 3 exception 2, 250000 odd 247 value 0");
    }
}

}  // namespace
