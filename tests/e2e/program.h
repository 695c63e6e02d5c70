// dravo-host as a user runs it, and a line for it.
#ifndef DRAVO_TESTS_E2E_PROGRAM_H
#define DRAVO_TESTS_E2E_PROGRAM_H

#include <gtest/gtest.h>

#include <QtCore/QProcess>
#include <QtCore/QTemporaryFile>

#include "host/simulation/simulated_line.h"

/// Where bytes take no time.
inline std::unique_ptr<SimulatedLine> startLine(SimulatedLineOptions options) {
    options.paced = false;
    std::unique_ptr<SimulatedLine> line;
    const simulation::Failure failure = SimulatedLine::start(options, &line);
    EXPECT_FALSE(failure) << failure.text();
    return line;
}

class TagFile : public QTemporaryFile {
public:
    explicit TagFile(const QByteArray &rows) {
        EXPECT_TRUE(open());
        write("label,type,address,station,count\n" + rows);
        close();
    }
};

class Program : public QProcess {
public:
    explicit Program(const QStringList &arguments) { start(DRAVO_HOST_PROGRAM, arguments); }
    ~Program() override {
        terminate();
        waitForFinished();
    }

    /// What it writes to its standard output, until it ends.
    QString output() {
        EXPECT_TRUE(waitForFinished(60000)) << errorString().toStdString();
        return readAllStandardOutput();
    }
    /// Whether some text comes on an output within half a minute.
    bool says(ProcessChannel channel, const char *text) {
        setReadChannel(channel);
        QByteArray said;
        while (!said.contains(text) && (canReadLine() || waitForReadyRead(30000))) {
            said += readLine();
        }
        return said.contains(text);
    }
};

#endif  // DRAVO_TESTS_E2E_PROGRAM_H
