// dravo-host reads and writes every element type on both sides of every bound of the address map, by Modbus and by
// remote frames, against the controllers' memory as seen from behind. The places are literals: coil "c", register "r",
// bit of a register "b12.3", 32-bit value in two registers "p12" (high half first), or "p12,34" where the halves lie
// apart.
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <bitset>

#include "e2e/program.h"
#include "host/simulation/simulated_line.h"

namespace {

struct ElementCase {
    int type;
    const char *address;
    const char *places;
};
const ElementCase kElements[] = {
    {0, "17", "c1215 c1216"},
    {1, "10", "c8 c9 c10"},
    {2, "2046", "c4046 c4047 c12000 c12001"},
    {3, "255", "c4655 c30000 c30001"},
    {4, "1022", "c7022 c7023 c31000"},
    {5, "254", "c8254 c8255 c11000 c11001"},
    {6, "255", "c9455 c10000"},
    {7, "7998", "r7998 r7999 r50000 r50001"},
    {8, "255", "r8255 r12000"},
    {9, "254", "r9254 r9255 r11000"},
    {10, "7", "r9507"},
    {11, "9", "r8509 r8510"},
    {12, "7996", "p7996 p7998 p50000"},
    {12, "7995", "p7995 p7997 p7999,50000 p50001"},
    {13, "254", "p9808 p9810 p10000"},
    {14, "255", "p8255,12000 p12001"},
    {15, "7999.14", "b7999.14 b7999.15 b50000.0"},
    {16, "255.15", "b8255.15 b12000.0"},
    {17, "0.15", "b8500.15 b8501.0"},
    {18, "5", "p8505"},
    {19, "3", "r13003"},
    {20, "2.20", "b13003.4"},
    {21, "8", "p13008 p13010"},
};

constexpr size_t kCells = 131072;  // coils, and as many registers, of two stations
using Memory = std::bitset<kCells * 17>;

class AllClasses : public ::testing::Test {
protected:
    void SetUp() override {
        SimulatedLineOptions options;
        options.stations = {1, 2};
        options.remoteNode = 9;
        options.moving = false;
        const simulation::Failure failure = SimulatedLine::start(options, &line);
        ASSERT_FALSE(failure) << failure.text();
        for (int station : {1, 2}) {
            for (int i = 0; i < 65536; ++i) {
                line->setCoil(station, i, (i * 7 + i / 5 + station) % 3 == 0);
                line->setHoldingRegister(station, i, quint16(i * 40503 + station * 977));
            }
        }
    }

    // What the memory holds at the places of an element, or the complement.
    QStringList valuesAt(int station, const ElementCase &element, quint32 inverted = 0) const {
        QStringList values;
        for (const QString &place : QString(element.places).split(' ')) {
            const char kind = place.at(0).toLatin1();
            const QStringList where = place.mid(1).split(QRegExp("[.,]"));
            const int first = where.first().toInt();
            const int last = kind == 'p' ? where.value(1, QString::number(first + 1)).toInt() : first;
            const quint32 word = line->holdingRegister(station, last);
            const quint32 value = kind == 'c'   ? line->coil(station, first)
                                  : kind == 'b' ? word >> where.at(1).toInt()
                                                : word | quint32(line->holdingRegister(station, first)) << 16;
            const quint32 mask = kind == 'p' ? 0xFFFFFFFF : kind == 'r' ? 0xFFFF : 1;
            values.append(QString::number((value ^ inverted) & mask));
        }
        return values;
    }

    // All coils and registers, bit by bit.
    Memory memory() const {
        Memory bits;
        for (size_t i = 0; i < kCells; ++i) {
            const int station = 1 + int(i / 65536);
            const quint32 word =
                line->holdingRegister(station, int(i % 65536)) * 2U + line->coil(station, int(i % 65536));
            for (size_t bit = 0; bit < 17; ++bit) {
                bits[i * 17 + bit] = word >> bit & 1;
            }
        }
        return bits;
    }

    QString run(const QStringList &arguments) {
        Program program(arguments +
                        QStringList{"--port", QString::fromStdString(line->device()), "--start-silence", "0"});
        QString output = program.output();
        EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
        return output;
    }

    std::unique_ptr<SimulatedLine> line;
};

TEST_F(AllClasses, MonitorShowsWhatTheControllersHold) {
    QTemporaryDir folder;
    QFile tags(folder.filePath("tags.csv"));
    ASSERT_TRUE(tags.open(QIODevice::WriteOnly));
    tags.write("label,type,address,station,count\n");
    QString expected;
    for (int station : {1, 2}) {
        for (const ElementCase &element : kElements) {
            const QStringList values = valuesAt(station, element);
            const QString tag =
                QString("\"a, \"\"b\"\"\",%1,%2,%3,").arg(element.type).arg(element.address).arg(station);
            tags.write((tag + QString::number(values.size()) + '\n').toUtf8());
            expected += tag + "fresh," + values.join(' ') + ",,\n";
        }
    }
    tags.close();
    for (const char *option :
         {"--frame-limit=1", "--frame-limit=5", "--frame-limit=125", "--merge=time", "--remote-node=9"}) {
        QString shown = run({"monitor", "--tags", tags.fileName(), "--passes", "1", "--format", "csv", option});
        shown.replace(QRegExp("\n1,[^,]*,"), "\n").replace(QRegExp("fresh,\\d+,"), "fresh,");  // pass, time, age
        EXPECT_EQ(shown.section('\n', 1).toStdString(), expected.toStdString()) << option;
    }
}

TEST_F(AllClasses, WriteChangesTheNamedElementsAndNothingElse) {
    for (const ElementCase &element : kElements) {
        for (const QStringList &options : {QStringList(), QStringList{"--remote-node", "9"}}) {
            SCOPED_TRACE(testing::Message() << "type " << element.type << " address " << element.address << " "
                                            << options.join(' ').toStdString());
            const auto before = memory();
            const QStringList values = valuesAt(2, element, 0xFFFFFFFF);
            const QString output =
                run(QStringList{"write", QString::number(element.type), element.address, "--station", "2"} + values +
                    options);
            EXPECT_EQ(valuesAt(2, element), values);
            EXPECT_EQ(output.count(' ' + values.join(' ') + '\n'), 2) << "written, read back: " << output.toStdString();
            const QString places = element.places;
            EXPECT_EQ((memory() ^ before).count(),
                      size_t(places.count('p') * 32 + places.count('r') * 16 + places.count(QRegExp("[bc]"))));
        }
    }
}

}  // namespace
