// The command line and the option file: what is taken, and every fault named.
#include <gtest/gtest.h>

#include <QtCore/QTemporaryFile>

#include "host/commands/command_tree.h"
#include "host/commands/open_line.h"
#include "host/simulation/element_map.h"
#include "support/table.h"

namespace {

/// lines: of an option file, "&" ends one; empty: there is no file.
CommandLine parse(QString arguments, QByteArray lines = QByteArray()) {
    QTemporaryFile file;
    EXPECT_TRUE(file.open());
    file.write(lines.replace('&', '\n'));
    file.close();
    arguments += lines.isEmpty() ? QString() : " --config " + file.fileName();
    return parseCommandLine(QStringList{"dravo-host"} + arguments.split(' ', Qt::SkipEmptyParts));
}

TEST(CommandLine, NamesEveryFault) {
    // faults: words of each, in their order.
    for (const TableRow &row : table(R"(
        lines                                      | arguments                                                     | faults
                                                   |                                                               | give a command: monitor, read, write, plan, scan, ports or simulate
                                                   | watch                                                         | there is no command 'watch'
                                                   | monitor --passes 0 --seconds 1 extra --tags=                  | unexpected argument 'extra'; --tags names no file; --passes '0'; --passes and --seconds
                                                   | monitor --port x --faults lost=1 --passes 1 --passes 2 --prot | there is no option '--prot'; --passes is given 2; --faults fault 'lost=1'; --faults are
                                                   | monitor --format xml --parity mark --remote-node 256 --period | --period is given no value; --format 'xml'; --parity 'mark'; --remote-node '256'
                                                   | monitor --retries -1 --timeout 0 --frame-limit 126            | --timeout '0'; --retries '-1'; --frame-limit '126': give a whole number from 1 to 125
                                                   | monitor --config /nowhere                                     | option file /nowhere: cannot open it
                                                   | read 7                                                        | read takes TYPE ADDRESS
                                                   | read 22 108 5 --station 0                                     | unexpected argument '5'; TYPE '22'; --station '0'
                                                   | read 7 100 --timeout 400 --lifetime 399 --echo maybe          | --echo 'maybe'; --lifetime is less than --timeout
                                                   | read 7 100 --timeout 500 --lifetime 500 --count 0x7d0         |
                                                   | read --merge x 7 0 --station 0                                | there is no option '--merge'; --station '0'
                                                   | plan --stations 3 --down-after                                | there is no option '--stations'; there is no option '--down-after'
                                                   | read 22 0 --merge --verbose                                   | no option '--merge'; no option '--verbose'; TYPE '22'
                                                   | read 22 0 -5                                                  | unexpected argument '-5'; TYPE '22'
                                                   | help watch                                                    | there is no help on 'watch'
                                                   | write 7 100                                                   | write takes TYPE ADDRESS VALUE...
                                                   | write 7 1x 70000 [1,2] ++                                     | unexpected argument '++'; address: '1x'; '70000' is no value here: give -32768; '[1,2]'
                                                   | write 7 100 1 --frame-limit 125 --retries 0 --remote-node 255 |
                                                   | write 12 0 -inf --as float --retries -1 -x                    | there is no option '-x'; --retries '-1'
                                                   | write 7 0 -40 --scale 0.1 --offset -39.5 --as hex --station 0 | --station '0'; --scale '0.1' goes; --offset '-39.5' goes
                                                   | write 15 12.16 1 --scale 0 --offset 1. --as signed            | --offset '1.'; address: '12.16' has; --as 'signed'; --scale '0' must not
                                                   | write 7 0 0.00002 --scale 0.00002 --offset=-0.000000001       | '0.00002' is no value here: give 0.000019999 or 0.000039999
        [read]&as=real&scale=                      | read 20 -1.16                                                 | line 2: --as 'real'; line 3: --scale '' is no; address: '-1.16' is no word.bit
                                                   | plan --turnaround 10001 --format csv --merge x --passes 0     | --format 'csv'; --turnaround '10001'; --passes '0'; --merge 'x'
                                                   | simulate --stations 1,1,0,x --link a --second-link a          | --stations names 1 twice; --stations '0'; --stations 'x'; --link and --second
                                                   | scan --stations 1-9,9-12,5-4,248,-1,1- --baud 9600,9600,49  | --stations names 9 twice; '5-4' ends before; '248'; '-1'; --stations ''; --baud names 9600 twice; --baud '49'
                                                   | scan --port x --parity odd,odd,x --faults late=1 --lifetime 9 | --parity names odd twice; --parity 'x'; --faults is of; --lifetime is less
                                                   | simulate --stations 1,2 --faults dead=3 --turnaround 4:1      | 'dead': station 3 is not; turnaround: station 4 is not
                                                   | read 7 1 --unpaced --turnaround 1 --faults refuse=2:1         | --unpaced and --turnaround; 'refuse': station 2
                                                   | monitor --port x --unpaced --turnaround 5:x,1                 | --turnaround '5:x'; --unpaced and; --turnaround is of; --unpaced is of
        baud = 1&give-up=off                       | monitor                                                       | line 1: --baud '1': give a whole number
        passes=1&&passes=6&oops                    | monitor                                                       | line 3: 'passes' is given again, first on line 1; line 4: 'oops' is not NAME = VALUE
        [monitor]&passes=1&seconds=2&give-up=maybe | monitor                                                       | line 4: --give-up 'maybe': give on or off; --passes and --seconds
        [read]&tags=x                              | monitor                                                       | line 2: 'read' has no option 'tags'
        config=x&help=1&TYPE=7                     | monitor                                                       | no option 'config'; no option 'help'; no option 'TYPE')")) {
        const QStringList faults = parse(row["arguments"], row["lines"]).faults;
        const QStringList expected = QString(row["faults"]).split("; ", Qt::SkipEmptyParts);
        EXPECT_EQ(faults.size(), expected.size()) << row.line() << '\n' << faults.join('\n').toStdString();
        for (int i = 0; i < expected.size(); ++i) {
            EXPECT_TRUE(faults.value(i).contains(expected.at(i))) << row.line() << '\n'
                                                                  << faults.value(i).toStdString();
        }
    }
    EXPECT_TRUE(parse("write 2 0" + QString(" 1").repeated(1968)).faults.isEmpty());
    EXPECT_EQ(parse("write 2 0" + QString(" 1").repeated(1969)).faults.size(), 1);
}

TEST(CommandLine, TakesWhatIsGiven) {
    const Options write = parse("write 7 100 -5 3 --station 9 read -7 --timeout=60 --parity odd").settings;
    EXPECT_EQ(write.values, (QStringList{"-5", "3", "read", "-7"}));
    EXPECT_EQ(QVector<int>({write.variable.station, write.variable.count, write.timeoutMs, write.port.parity}),
              QVector<int>({9, 4, 60, QSerialPort::OddParity}));
    const Options monitor = parse("monitor --remote-node 0 --stop-bits 2 --faults dead=2 --unpaced").settings;
    const SimulatedLineOptions simulation = simulationFor(monitor);
    const dravo::LineSettings own = lineSettings(monitor);
    // Late is after the timeout and before the lifetime ends at 1500 ms; nobody else is on a simulated line.
    EXPECT_EQ(
        QVector<qint64>({simulation.deadStation, simulation.remoteNode, simulation.lateBy.count(), own.startSilenceUs,
                         own.bitsPerCharacter, simulation.bitsPerCharacter, simulation.paced, simulation.baud}),
        QVector<qint64>({2, 0, 626, 0, 12, 12, 0, 115200}));
    const SimulatedLineOptions served = simulationFor(parse("simulate --parity odd --any-settings").settings);
    EXPECT_TRUE(served.parity == simulation::Parity::Odd && served.anySettings && !simulation.anySettings);
    EXPECT_EQ(parse("monitor --port x").settings.port.baud + parse("simulate").settings.port.baud, 2 * 19200);
    const dravo::LineSettings port = lineSettings(
        parse("monitor --port x --baud 300 --parity none --timeout 60 --retries 5 --frame-limit 9 --down-after 0 "
              "--echo on --merge time --lifetime 99 --period 7")
            .settings);
    EXPECT_LT(port.startSilenceUs, 0) << "a lifetime";
    EXPECT_EQ(QVector<qint64>({port.baud, port.bitsPerCharacter, port.timeoutUs, port.lifetimeUs, port.retries,
                               port.frameLimit, port.passPeriodUs, port.downAfter, port.echo, port.merge}),
              QVector<qint64>({300, 10, 60000, 99000, 5, 9, 7000, 0, dravo::EchoOn, dravo::MergeByTime}));
}

TEST(CommandLine, HelpFitsAndNamesEveryCommand) {
    for (const Command *command : commands()) {
        EXPECT_TRUE(parse("--help").text.contains(QString("\n  ") + command->name + ' ')) << command->name;
        const QString help = parse(QString(command->name) + " -h").text;
        EXPECT_TRUE(help.startsWith(QString("Usage: dravo-host ") + command->name)) << help.toStdString();
        EXPECT_EQ(parse(QString("help ") + command->name).text, help);
        const bool onLine = command != &kPortsCommand;
        EXPECT_EQ(help.contains(QRegExp("4000000 (each\\s+)?.19200")), onLine) << help.toStdString();
        EXPECT_EQ(help.contains("stray=P "), onLine) << help.toStdString();
        EXPECT_FALSE(help.contains(QRegExp("[^\n]{81}"))) << help.toStdString();
    }
}

/// Whether driver and tool refuse a variable so many words or bits behind an address text.
bool refused(int elemType, const QString &addressText, int more) {
    const int base = elemType < 2 ? 8 : 10;
    const QString word = addressText.section('.', 0, 0);
    const QString text = QString::number(word.toInt(nullptr, base) + more, base) + addressText.mid(word.size());
    return !parse(QString("read %1 %2").arg(elemType).arg(text)).faults.isEmpty();
}

TEST(CommandLine, HelpOnTypesIsTrueOfDriverAndControllers) {
    const QStringList rows = parse("--help types").text.section("on the line\n", 1).split('\n');
    const QRegularExpression place(R"((2 \* )?\(?a(?: \+ (\d+))?)");
    int type = -1;
    for (int i = 0; i + 1 < rows.size(); ++i) {
        type += rows.at(i).startsWith("     ") ? 0 : 1;
        const QStringList words = rows.at(i).mid(29).simplified().split(' ');
        EXPECT_EQ(refused(type, words.at(0), 0) + refused(type, words.at(1), 0), 0) << rows.at(i).toStdString();
        EXPECT_NE(refused(type, words.at(1), 1), rows.at(i + 1).startsWith("     ")) << rows.at(i).toStdString();
        const auto found = place.match(rows.at(i).mid(rows.at(i).lastIndexOf("  ")));
        const int first = words.at(0).toInt();
        EXPECT_EQ((first + found.captured(2).toInt()) * (found.captured(1).isEmpty() ? 1 : 2),
                  rows.at(i).contains("of type") ? first : *simulation::modbusAddress(type, first));
    }
    EXPECT_EQ(type, 21);
}

TEST(OptionFile, FillsWhatTheCommandLineLeavesOpen) {
    const char kLines[] = "# all&baud = 9600\r&passes=7&timeout = 70&[read]&timeout = 80&[monitor]&tags = \"a #b = c\"";
    EXPECT_EQ(parse("read 7 100", kLines).settings.timeoutMs, 80) << "the command's own section";
    const Options monitor = parse("monitor --timeout 300", kLines).settings;
    EXPECT_EQ(QVector<int>({monitor.timeoutMs, monitor.port.baud, *monitor.passes}), QVector<int>({300, 9600, 7}));
    EXPECT_EQ(monitor.tagFile, QString("a #b = c"));
    EXPECT_TRUE(parse("monitor", kLines).faults.isEmpty());
}

}  // namespace
