// dravo-host reads and writes every element type on both sides of every bound of the address map, against the
// controllers' memory as seen from behind. The places are literals: coil "c", register "r", bit of a register "b12.3",
// 32-bit value in two registers "p12" (high half first), or "p12,34" where the halves lie apart.
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

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
constexpr int kStations[] = {1, 2};

class AllClasses : public ::testing::Test {
protected:
    void SetUp() override {
        SimulatedLineOptions options;
        options.stations.assign(std::begin(kStations), std::end(kStations));
        options.moving = false;
        std::string error;
        line = SimulatedLine::start(options, &error);
        ASSERT_TRUE(line) << error;
        for (int station : kStations) {
            for (int i = 0; i < 65536; ++i) {
                line->setCoil(station, i, (i * 7 + i / 5 + station) % 3 == 0);
                line->setHoldingRegister(station, i, quint16(i * 40503 + station * 977));
            }
        }
    }

    // What the memory holds at a place.
    quint32 valueAt(int station, const QString &place) const {
        const QString where = place.mid(1);
        if (place.startsWith('c')) {
            return line->coil(station, where.toInt());
        }
        if (place.startsWith('r')) {
            return line->holdingRegister(station, where.toInt());
        }
        if (place.startsWith('b')) {
            return line->holdingRegister(station, where.section('.', 0, 0).toInt()) >> where.section('.', 1).toInt() &
                   1;
        }
        const int high = where.section(',', 0, 0).toInt();
        const int low = where.contains(',') ? where.section(',', 1).toInt() : high + 1;
        return quint32(line->holdingRegister(station, high)) << 16 | line->holdingRegister(station, low);
    }
    QStringList valuesAt(int station, const ElementCase &element) const {
        QStringList values;
        for (const QString &place : QString::fromLatin1(element.places).split(' ')) {
            values.append(QString::number(valueAt(station, place)));
        }
        return values;
    }

    // All coils and registers of a station, bit by bit.
    QByteArray memory(int station) const {
        QByteArray bits;
        for (int i = 0; i < 65536; ++i) {
            bits.append(char(line->coil(station, i)));
        }
        for (int i = 0; i < 65536; ++i) {
            for (int bit = 0; bit < 16; ++bit) {
                bits.append(char(line->holdingRegister(station, i) >> bit & 1));
            }
        }
        return bits;
    }

    QByteArray run(const QStringList &arguments) {
        QProcess process;
        process.start(DRAVO_HOST_PROGRAM, arguments + QStringList{"--port", QString::fromStdString(line->device())});
        EXPECT_TRUE(process.waitForFinished(60000)) << process.errorString().toStdString();
        exitCode = process.exitCode();
        return process.readAllStandardOutput() + process.readAllStandardError();
    }

    std::unique_ptr<SimulatedLine> line;
    int exitCode = -1;
};

TEST_F(AllClasses, MonitorShowsWhatTheControllersHold) {
    QTemporaryDir folder;
    QFile tags(folder.filePath("tags.csv"));
    ASSERT_TRUE(tags.open(QIODevice::WriteOnly));
    tags.write("label,type,address,station,count\n");
    QStringList expected;
    for (int station : kStations) {
        for (const ElementCase &element : kElements) {
            const QStringList values = valuesAt(station, element);
            tags.write(QString("\"a, \"\"b\"\"\",%1,%2,%3,%4\n")
                           .arg(QString::number(element.type), element.address, QString::number(station),
                                QString::number(values.size()))
                           .toUtf8());
            expected.append(
                QString("%1,%2,%3,fresh,%4")
                    .arg(QString::number(element.type), element.address, QString::number(station), values.join(' ')));
        }
    }
    tags.close();

    for (const char *frameLimit : {"1", "3", "125"}) {
        const QByteArray output = run(
            {"monitor", "--tags", tags.fileName(), "--passes", "1", "--format", "csv", "--frame-limit", frameLimit});
        EXPECT_EQ(exitCode, 0) << output.toStdString();
        QStringList shown;
        for (const QString &row : QString::fromUtf8(output).split('\n')) {
            const QStringList fields = row.section("\"a, \"\"b\"\"\",", 1).split(',');
            if (fields.size() >= 6) {  // type, address, station, state, age, values
                shown.append((fields.mid(0, 4) + fields.mid(5, 1)).join(','));
            }
        }
        ASSERT_EQ(shown.size(), expected.size()) << output.toStdString();
        for (int i = 0; i < shown.size(); ++i) {
            EXPECT_EQ(shown.at(i).toStdString(), expected.at(i).toStdString()) << "frame limit " << frameLimit;
        }
    }
}

TEST_F(AllClasses, WriteChangesTheNamedElementsAndNothingElse) {
    for (const ElementCase &element : kElements) {
        SCOPED_TRACE(testing::Message() << "type " << element.type << " address " << element.address);
        const QByteArray before = memory(2);
        const QByteArray otherStation = memory(1);
        QStringList values;
        int bits = 0;  // that are to change: all that the places have
        for (const QString &place : QString::fromLatin1(element.places).split(' ')) {
            const int width = place.startsWith('p') ? 32 : place.startsWith('r') ? 16 : 1;
            const quint32 mask = width == 32 ? 0xFFFFFFFFu : (1u << width) - 1;
            values.append(QString::number(~valueAt(2, place) & mask));
            bits += width;
        }
        const QByteArray output =
            run(QStringList{"write", QString::number(element.type), element.address, "--station", "2"} + values);
        EXPECT_EQ(exitCode, 0) << output.toStdString();
        EXPECT_EQ(valuesAt(2, element).join(' ').toStdString(), values.join(' ').toStdString());
        EXPECT_EQ(output.count(values.join(' ').toLatin1()), 2) << "written and read back: " << output.toStdString();

        const QByteArray after = memory(2);
        int changed = 0;
        for (int i = 0; i < before.size(); ++i) {
            changed += before.at(i) != after.at(i);
        }
        EXPECT_EQ(changed, bits);
        EXPECT_EQ(memory(1), otherStation);
    }
}

TEST_F(AllClasses, FailuresAndUsageErrorsHaveTheirOwnStatus) {
    run({"read", "7", "1", "--station", "9", "--timeout", "20", "--retries", "1"});
    EXPECT_EQ(exitCode, 1);
    for (const QStringList &usage : {QStringList{"read", "7", "12x"},
                                     {"read", "22", "1"},
                                     {"write", "7", "1"},
                                     {"write", "7", "1", "65536"},
                                     {"monitor", "--passes", "1", "--baud", "fast"}}) {
        run(usage);
        EXPECT_EQ(exitCode, 2) << usage.join(' ').toStdString();
    }
}

}  // namespace
