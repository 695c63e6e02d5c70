// The monitor's commands and statistics while the line fails: whatever happens, each command is answered.
#include "e2e/program.h"

namespace {

TEST(MonitorStreams, AnswerEveryCommandWhateverBecomesOfTheLine) {
    SimulatedLineOptions options;
    options.stations = {1};
    options.deadStation = 1;
    auto line = startLine(options);
    const TagFile tags("a,7,100,1,1\n");
    const auto monitor = [&](const std::string &device, const QString &more) {
        return QString("monitor --format json --timeout 60000 --echo off --start-silence 0 --commands - " + more)
                   .split(' ') +
               QStringList{"--tags", tags.fileName(), "--port", device.c_str()};
    };
    const auto write = [](Program *program, const char *id) {
        program->write(QByteArray(R"({"write": {"label": "a", "values": [1]}, "id": )") + id + "}\n");
    };
    Program lost(monitor(line->device(), "--statistics - --every 1"));
    Program over(monitor(line->secondDevice(), "--seconds 2 --until-input-ends"));
    write(&lost, "1");
    write(&over, "1");
    over.closeWriteChannel();
    EXPECT_TRUE(over.output().contains(QRegExp("\"id\":1,.*\"not sure\".*\"why\":\"the run ended before")))
        << "unanswered";
    EXPECT_TRUE(lost.says(QProcess::StandardOutput, "\"record\":\"statistics\""));
    line.reset();
    EXPECT_TRUE(lost.says(QProcess::StandardOutput, "\"id\":1,"));
    write(&lost, "2");
    EXPECT_TRUE(lost.says(QProcess::StandardOutput, "\"why\":\"the device is lost\"")) << "not refused";
    lost.closeWriteChannel();
    EXPECT_TRUE(lost.says(QProcess::StandardError, "the commands have ended"));
    lost.terminate();
    const QString end = lost.output();
    EXPECT_EQ(end.count("\"id\":"), 0) << "answered again: " << end.toStdString();
    EXPECT_TRUE(end.endsWith('\n') && end.contains("\"station\":null"));
}

}  // namespace
