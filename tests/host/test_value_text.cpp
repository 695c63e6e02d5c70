// Values as they are typed and shown, result codes in words, and the command
// line around them.
#include <gtest/gtest.h>

#include "host/csv_text.h"
#include "host/options.h"
#include "host/result_text.h"
#include "host/value_text.h"

namespace {

TEST(ValueText, ReadsBothEndsOfEveryRange) {
    const struct {
        ValueKind kind;
        QStringList taken;
        const char *bytes;  // of those taken
        std::vector<quint32> shown;
        QStringList refused;
    } kCases[] = {
        {ValueKind::Bit, {"on", "OFF", "1", "0x0"}, "01000100", {1, 0, 1, 0}, {"2", "-1"}},
        {ValueKind::Word,
         {"65535", "-32768", "0xABcd"},
         "ffff0080cdab",
         {65535, 32768, 43981},
         {"65536", "-32769", "0x10000", "on", "", "0x", "0x-1", "--1", "1.5", " 1", "1 "}},
        {ValueKind::DoubleWord,
         {"4294967295", "-2147483648", "0x12345678"},
         "ffffffff0000008078563412",
         {4294967295, 2147483648, 305419896},
         {"4294967296", "-2147483649", "0x100000000", "99999999999999999999"}},
    };
    for (const auto &c : kCases) {
        QStringList faults;
        const QByteArray bytes = valueBytes(c.kind, c.taken + c.refused, &faults);
        EXPECT_EQ(bytes.toHex(), QByteArray(c.bytes));
        EXPECT_EQ(faults.size(), c.refused.size()) << faults.join('\n').toStdString();
        for (int i = 0; i < c.taken.size(); ++i) {
            EXPECT_EQ(valueAt(c.kind, bytes, i), c.shown.at(size_t(i)));
        }
    }
    EXPECT_EQ(valueAt(ValueKind::Word, QByteArray::fromHex("0100ff"), 1), 255U) << "half a value";
}

TEST(ResultText, NamesEveryCode) {
    const struct {
        std::vector<int> codes;
        int exceptionCode;
        const char *text;
    } kCases[] = {
        {{1, 100}, 0, "good"},
        {{0}, 0, "bad reply, sent again"},
        {{11, 22, 111, 122}, 0, "reply with a wrong station or checksum"},
        {{41, 52, 141, 152}, 0, "no reply"},
        {{71, 82, 171, 182}, 0, "reply of the wrong length"},
        {{71}, 2, "refused: illegal data address (exception 2)"},
        {{71}, 99, "refused: unknown exception (exception 99)"},
    };
    for (const auto &c : kCases) {
        for (const int code : c.codes) {
            EXPECT_EQ(describeResult(code, c.exceptionCode), QString(c.text)) << code;
        }
    }
}

TEST(CsvField, ReadsBackAsItWas) {
    for (const char *text : {"", "a,b", "\"", "a\"b\r\n", "\n"}) {
        EXPECT_EQ(csvRows(csvField(text) + ",end").value(0).fields, (QStringList{text, "end"})) << text;
    }
}

TEST(Options, RefusesWhatIsOutOfRangeOrContradicts) {
    const struct {
        const char *arguments;
        int faults;
    } kCases[] = {
        {"", 1},
        {"watch", 1},
        {"monitor --passes 1 --format json --remote-node 255 --frame-limit 125", 0},
        {"monitor --passes 0 --seconds 1 extra --port /dev/ttyS0 --faults lost=1 "
         "--remote-node 256",
         6},
        {"monitor --passes 1 --passes 2", 1},
        {"monitor --format xml --parity mark --stop-bits 3 --baud x --timeout 0 "
         "--retries -1 --frame-limit 126",
         7},
        {"read 7", 1},
        {"read 7 100 5", 1},
        {"read 22 100", 1},
        {"read 0 8", 1},
        {"read 7 100 --count 0 --station 248", 2},
        {"read 7 100 --count 1025 --frame-limit 1", 1},
        {"read 7 100 --count 1024 --frame-limit 1", 0},
        {"write 7 100", 1},
        {"write 7 100 70000 x 3", 2},
        {"write 13 0 -2147483648", 0},
        {"simulate --stations 1,247 --seconds 1", 0},
        {"simulate --stations 1,1,0,x --link a --second-link a", 4},
        {"simulate --port /dev/ttyS0", 1},
    };
    for (const auto &c : kCases) {
        const QStringList faults =
            parseOptions(QStringList{"dravo-host"} + QString(c.arguments).split(' ', Qt::SkipEmptyParts)).faults;
        EXPECT_EQ(faults.size(), c.faults) << c.arguments << '\n' << faults.join('\n').toStdString();
    }
    const Options negative =
        parseOptions({"dravo-host", "write", "7", "100", "-5", "3", "--station", "9", "-7"}).options;
    EXPECT_EQ(negative.values, (QStringList{"-5", "3", "-7"}));
    EXPECT_EQ(negative.variable.station, 9);
}

}  // namespace
