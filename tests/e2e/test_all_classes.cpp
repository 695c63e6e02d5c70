// dravo-host writes, reads and shows every element type on both sides of every bound of the address map, by Modbus and
// by remote frames, against the controllers' memory as seen from behind.
#include <numeric>

#include "e2e/program.h"
#include "support/table.h"

namespace {

// The places are literals: coil "c", register "r", bit of a register "b12,3", 32-bit value in two registers "p12,13",
// high half first.
const char kElements[] = R"(
    type | address | places
    0    | 17      | c1215 c1216
    1    | 10      | c8 c9 c10
    2    | 2046    | c4046 c4047 c12000 c12001
    3    | 255     | c4655 c30000 c30001
    4    | 1022    | c7022 c7023 c31000
    5    | 254     | c8254 c8255 c11000 c11001
    6    | 255     | c9455 c10000
    7    | 7998    | r7998 r7999 r50000 r50001
    8    | 255     | r8255 r12000
    9    | 254     | r9254 r9255 r11000
    10   | 7       | r9507
    11   | 9       | r8509 r8510
    12   | 7995    | p7995,7996 p7997,7998 p7999,50000 p50001,50002
    13   | 254     | p9808,9809 p9810,9811 p10000,10001
    14   | 255     | p8255,12000 p12001,12002
    15   | 7999.14 | b7999,14 b7999,15 b50000,0
    16   | 255.15  | b8255,15 b12000,0
    17   | 0.15    | b8500,15 b8501,0
    18   | 5       | p8505,8506
    19   | 3       | r13003
    20   | 3.4     | b13003,4
    21   | 8       | p13008,13009 p13010,13011)";

class AllClasses : public ::testing::Test {
protected:
    AllClasses() {
        SimulatedLineOptions options;
        options.stations = {1, 2};
        options.remoteNode = 9;
        options.moving = false;
        line = startLine(options);
        for (int i = 0; i < 2 * 65536; ++i) {
            line->setCoil(1 + i % 2, i / 2, (i * 7 + i / 5) % 3 == 0);
            line->setHoldingRegister(1 + i % 2, i / 2, quint16(i * 40503));
        }
    }

    // What station 2 holds at the places, or the complement.
    QString valuesAt(const QString &places, quint32 inverted = 0) const {
        QStringList values;
        for (const QString &place : places.split(' ')) {
            const char kind = place.at(0).toLatin1();
            const int last = place.mid(1).section(',', -1).toInt();
            const quint32 high = line->holdingRegister(2, place.mid(1).section(',', 0, 0).toInt());
            const quint32 value = kind == 'c'   ? line->coil(2, last)
                                  : kind == 'b' ? high >> last
                                                : high << 16 | line->holdingRegister(2, last);
            values += QString::number((value ^ inverted) & (kind == 'p' ? 0xFFFFFFFF : kind == 'r' ? 0xFFFF : 1));
        }
        return values.join(' ');
    }

    std::vector<quint32> memory() const {
        std::vector<quint32> cells(size_t(2) * 65536);
        for (int i = 0; i < 2 * 65536; ++i) {
            cells[size_t(i)] = line->holdingRegister(1 + i % 2, i / 2) * 2U + line->coil(1 + i % 2, i / 2);
        }
        return cells;
    }

    QString run(const QString &arguments) {
        Program program(arguments.split(' ') + QStringList{"--port", line->device().c_str(), "--start-silence", "0"});
        QString output = program.output();
        EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
        return output;
    }

    std::unique_ptr<SimulatedLine> line;
};

TEST_F(AllClasses, AreWrittenAndShownAndNothingElseChanges) {
    const std::vector<TableRow> elements = table(kElements);
    for (const char *options : {" --frame-limit 3", " --frame-limit 125", " --remote-node 9"}) {
        for (const TableRow &element : elements) {
            SCOPED_TRACE(element.line() + options);
            const QString places = element["places"];
            const auto before = memory();
            const QString values = valuesAt(places, 0xFFFFFFFF);
            const QString write = QString("write %1 %2 ").arg(element["type"], element["address"]);
            const QString output = run(write + values + " --station 2" + options);
            EXPECT_EQ(valuesAt(places), values);
            EXPECT_EQ(output.count(' ' + values + '\n'), 2) << "written, read back: " << output.toStdString();
            const auto after = memory();
            const auto differ = [](quint32 a, quint32 b) { return int(qPopulationCount(a ^ b)); };
            EXPECT_EQ(std::inner_product(before.begin(), before.end(), after.begin(), 0, std::plus<>(), differ),
                      places.count('p') * 32 + places.count('r') * 16 + places.count(QRegExp("[bc]")));
        }
        QString rows;
        QString expected;
        for (const TableRow &element : elements) {
            const QString values = valuesAt(element["places"]);
            rows += QString("all,%1,%2,2,").arg(element["type"], element["address"]);
            rows += QString::number(values.count(' ') + 1) + '\n';
            // A pair that stands across a bound is read in two requests: its halves may be of two moments.
            const bool isHalved = element.text("address") == "7995" || element.text("type") == "14";
            expected += (isHalved ? "stale " : "fresh ") + values + '\n';
        }
        const TagFile tags(rows.toUtf8());
        QString shown = run("monitor --passes 1 --format csv --tags " + tags.fileName() + options);
        shown = shown.section('\n', 1).replace(QRegExp("1,[^\n]*,(fresh|stale),\\d+,([^,]*),,,\\2,"), "\\1 \\2");
        EXPECT_EQ(shown.toStdString(), expected.toStdString()) << options;
    }
}

TEST(Write, SaysWhetherItMayHaveBeenCarriedOut) {
    const std::pair<const char *, bool> faults[] = {
        {"exception=1", true}, {"noreply=1", true}, {"refuse=1:100", false}};
    for (const auto &[fault, maybe] : faults) {
        Program write(QString("write 7 100 5 --retries 0 --timeout 60 --unpaced --faults %1").arg(fault).split(' '));
        EXPECT_EQ(write.output(), QString());
        EXPECT_EQ(write.exitCode(), 1);
        EXPECT_EQ(write.readAllStandardError().contains("it may have been carried out"), maybe) << fault;
    }
}

}  // namespace
