// The command line and the option file: what is taken, and every fault named.
#include <gtest/gtest.h>

#include <QtCore/QTemporaryFile>

#include "host/commands/command_tree.h"
#include "host/commands/open_line.h"
#include "support/table.h"

namespace {

CommandLine parse(const QString &arguments) {
    return parseCommandLine(QStringList{"dravo-host"} + arguments.split(' ', Qt::SkipEmptyParts));
}

/// Each fault has the words that are expected of it, in their order.
void expectFaults(const QStringList &faults, const QString &words, const std::string &line) {
    const QStringList expected = words.split("; ", Qt::SkipEmptyParts);
    ASSERT_EQ(faults.size(), expected.size()) << line << '\n' << faults.join('\n').toStdString();
    for (int i = 0; i < faults.size(); ++i) {
        EXPECT_TRUE(faults.at(i).contains(expected.at(i))) << line << '\n' << faults.at(i).toStdString();
    }
}

TEST(CommandLine, NamesEveryFault) {
    for (const TableRow &row : table(R"(
        arguments                                                 | faults
                                                                  | give a command: monitor, read, write or simulate
        watch                                                     | there is no command 'watch'
        monitor --passes 1 --format json --remote-node 255        |
        monitor --passes 0 --seconds 1 extra                      | unexpected argument 'extra'; --passes '0'; --passes and --seconds
        monitor --port /dev/ttyS0 --faults lost=1                 | --faults fault 'lost=1'; --faults are faults of the simulated line
        monitor --passes 1 --passes 2                             | --passes is given 2 times
        monitor --format xml --parity mark --stop-bits 3 --baud x | --format 'xml'; --baud 'x'; --parity 'mark'; --stop-bits '3'
        monitor --timeout 0 --retries -1 --frame-limit 126        | --timeout '0'; --retries '-1'; --frame-limit '126': give a whole number from 1 to 125
        monitor --remote-node 256 --baud 4000001 --period         | --period is given no value; --baud '4000001'; --remote-node '256'
        monitor --prot=x --tags= --seconds 5                      | there is no option '--prot=x'; --tags names no file
        read 7                                                    | read takes TYPE ADDRESS
        read 7 100 5                                              | unexpected argument '5'
        read 22 108 --station 0                                   | TYPE '22'; --station '0'
        read 0 8                                                  | address: '8' is no address of type 0
        read 7 100 --count 0 --station 248                        | --count '0'; --station '248'
        read 7 100 --timeout 400 --lifetime 399 --echo maybe      | --echo 'maybe'; --lifetime is less than --timeout
        read 7 100 --count 0x7d0 --lifetime 500                   |
        write 7 100                                               | write takes TYPE ADDRESS VALUE...
        write 7 100 70000 x 3                                     | '70000' is no value; 'x' is no value
        write 7 100 [1,2]                                         | '[1,2]' is no value
        write 7 100 1 ++                                          | unexpected argument '++'
        write 7 1x 70000                                          | address: '1x'; '70000' is no value here: give -32768
        write 13 0 -2147483648                                    |
        simulate --stations 1,247 --seconds 1                     |
        simulate --stations 1,1,0,x                               | --stations names station 1 twice; --stations '0'; --stations 'x'
        simulate --link a --second-link a                         | --link and --second-link
        simulate --port x                                         | there is no option '--port'; unexpected argument 'x')")) {
        expectFaults(parse(row["arguments"]).faults, row["faults"], row.line());
    }
    expectFaults(parse("write 2 0" + QString(" 1").repeated(1968)).faults, "", "1968 coils");
    expectFaults(parse("write 2 0" + QString(" 1").repeated(1969)).faults, "1969 bits are more", "1969 coils");
}

TEST(CommandLine, TakesWhatIsGiven) {
    const Options write = parse("write 7 100 -5 3 --station 9 read -7 --timeout=60 --parity odd").settings;
    EXPECT_EQ(write.values, (QStringList{"-5", "3", "read", "-7"}));
    EXPECT_EQ(QVector<int>({write.variable.station, write.variable.count, write.timeoutMs, write.port.parity}),
              QVector<int>({9, 4, 60, QSerialPort::OddParity}));
    const Options monitor = parse("monitor --format csv --remote-node 0 --stop-bits 2 --faults dead=2").settings;
    EXPECT_EQ(monitor.format, RecordFormat::Csv);
    const SimulatedLineOptions simulation = simulationFor(monitor);
    EXPECT_EQ(QVector<int>({simulation.deadStation, simulation.remoteNode}), QVector<int>({2, 0}));
    EXPECT_EQ(simulation.lateBy.count(), 626) << "after the timeout, before the lifetime ends at 1500 ms";
    const dravo::LineSettings own = lineSettings(monitor);
    EXPECT_EQ(own.startSilenceUs, 0) << "nobody else is on a simulated line";
    EXPECT_EQ(own.bitsPerCharacter, 12);
    const dravo::LineSettings port = lineSettings(
        parse("monitor --port x --baud 300 --parity none --timeout 60 --retries 5 --frame-limit 9 --down-after 0 "
              "--echo on --merge time --lifetime 99")
            .settings);
    EXPECT_LT(port.startSilenceUs, 0) << "a lifetime";
    EXPECT_EQ(QVector<qint64>({port.baud, port.bitsPerCharacter, port.timeoutUs, port.lifetimeUs, port.retries,
                               port.frameLimit, port.remoteNode, port.downAfter, port.echo, port.merge}),
              QVector<qint64>({300, 10, 60000, 99000, 5, 9, -1, 0, dravo::EchoOn, dravo::MergeByTime}));
}

TEST(CommandLine, HelpFitsAndNamesEveryCommand) {
    for (const Command *command : commands()) {
        EXPECT_EQ(parse(command->name).command, command);
        EXPECT_TRUE(parse("--help").text.contains(QString("\n  ") + command->name + ' ')) << command->name;
        const QString help = parse(QString(command->name) + " -h").text;
        EXPECT_TRUE(help.startsWith(QString("Usage: dravo-host ") + command->name)) << help.toStdString();
        EXPECT_TRUE(help.contains("4000000 (19200)") && help.contains("stray=P ")) << help.toStdString();
        for (const QString &line : help.split('\n')) {
            EXPECT_LE(line.size(), 80) << line.toStdString();
        }
    }
}

TEST(OptionFile, FillsWhatTheCommandLineLeavesOpen) {
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    const auto parseWith = [&file](QByteArray lines, const QString &arguments) {
        file.resize(0);
        file.write(lines.replace('&', '\n'));
        file.flush();
        return parse(arguments + " --config " + file.fileName());
    };
    const char kLines[] = "# all&baud = 9600\r&passes=7&timeout = 70&[read]&timeout = 80&[monitor]&tags = \"a #b = c\"";
    const CommandLine read = parseWith(kLines, "read 7 100");
    expectFaults(read.faults, "", kLines);
    EXPECT_EQ(read.settings.port.baud, 9600);
    EXPECT_EQ(read.settings.timeoutMs, 80) << "the command's own section";
    const Options monitor = parseWith(kLines, "monitor --baud 300").settings;
    EXPECT_EQ(monitor.port.baud, 300) << "the command line";
    EXPECT_EQ(monitor.timeoutMs, 70);
    EXPECT_EQ(monitor.passes, 7);
    EXPECT_EQ(monitor.tagFile, QString("a #b = c"));
    for (const TableRow &row : table(R"(
        lines                            | faults
        baud = 1                         | line 1: --baud '1': give a whole number
        [monitor]&passes=1&seconds=2     | --passes and --seconds
        baud=300&&baud=600               | line 3: 'baud' is given again, first on line 1
        bauds=300&oops                   | line 2: 'oops' is not NAME = VALUE; line 1: there is no option 'bauds'
        [read]&tags=x                    | line 2: there is no option 'tags' of a command 'read'
        give-up=maybe                    | line 1: --give-up 'maybe': give on or off
        give-up=off                      |
        config=x&help=1&TYPE=7           | no option 'config'; no option 'help'; no option 'TYPE')")) {
        expectFaults(parseWith(row["lines"], "monitor").faults, row["faults"], row.line());
    }
    expectFaults(parse("monitor --config /nowhere").faults, "option file /nowhere: cannot open it", "no such file");
}

}  // namespace
