// Values as they are typed and shown, result codes in words, and the command line around them.
#include <gtest/gtest.h>

#include "host/csv_text.h"
#include "host/options.h"
#include "host/result_text.h"
#include "host/value_text.h"

namespace {

struct ValueCase {
    const char *text;
    const char *bytes;  // hexadecimal; "": refused
    ValueKind kind;
    quint32 shown;
};

TEST(ValueText, ReadsBothEndsOfEveryRange) {
    const ValueKind bit = ValueKind::Bit;
    const ValueKind word = ValueKind::Word;
    const ValueKind doubleWord = ValueKind::DoubleWord;
    const ValueCase kCases[] = {
        {"on", "01", bit, 1},
        {"OFF", "00", bit, 0},
        {"1", "01", bit, 1},
        {"0x0", "00", bit, 0},
        {"2", "", bit, 0},
        {"-1", "", bit, 0},
        {"65535", "ffff", word, 65535},
        {"65536", "", word, 0},
        {"-32768", "0080", word, 32768},
        {"-32769", "", word, 0},
        {"0xABcd", "cdab", word, 43981},
        {"0x10000", "", word, 0},
        {"on", "", word, 0},
        {"4294967295", "ffffffff", doubleWord, 4294967295U},
        {"4294967296", "", doubleWord, 0},
        {"-2147483648", "00000080", doubleWord, 2147483648U},
        {"-2147483649", "", doubleWord, 0},
        {"0x12345678", "78563412", doubleWord, 305419896},
        {"0x100000000", "", doubleWord, 0},
        {"99999999999999999999", "", doubleWord, 0},
        {"", "", word, 0},
        {"0x", "", word, 0},
        {"0x-1", "", word, 0},
        {"--1", "", word, 0},
        {"1.5", "", word, 0},
        {" 1", "", word, 0},
        {"1 ", "", word, 0},
    };
    for (const ValueCase &c : kCases) {
        SCOPED_TRACE(c.text);
        QStringList faults;
        const QByteArray bytes = valueBytes(c.kind, {c.text}, &faults);
        EXPECT_EQ(bytes.toHex(), QByteArray(c.bytes));
        EXPECT_EQ(faults.size(), bytes.isEmpty() ? 1 : 0);
        EXPECT_EQ(valueAt(c.kind, bytes, 0), c.shown);
    }
    QStringList faults;
    EXPECT_EQ(valueBytes(word, {"1", "x", "2", "y"}, &faults).toHex(), QByteArray("01000200"));
    EXPECT_EQ(faults.size(), 2);
    EXPECT_EQ(valueAt(word, QByteArray::fromHex("0100ff"), 1), 255U) << "half a value";
}

TEST(ResultText, NamesEveryCode) {
    const struct {
        int code;
        int exceptionCode;
        const char *text;
    } kCases[] = {
        {1, 0, "good"},
        {100, 0, "good"},
        {0, 0, "bad reply, sent again"},
        {11, 0, "reply with a wrong station or checksum"},
        {22, 0, "reply with a wrong station or checksum"},
        {122, 0, "reply with a wrong station or checksum"},
        {41, 0, "no reply"},
        {52, 0, "no reply"},
        {141, 0, "no reply"},
        {71, 0, "reply of the wrong length"},
        {182, 0, "reply of the wrong length"},
        {71, 2, "refused: illegal data address (exception 2)"},
        {71, 99, "refused: unknown exception (exception 99)"},
    };
    for (const auto &c : kCases) {
        EXPECT_EQ(describeResult(c.code, c.exceptionCode), QString(c.text)) << c.code;
    }
}

TEST(CsvField, QuotesWhatNeedsIt) {
    EXPECT_EQ(csvField("plain text"), QString("plain text"));
    EXPECT_EQ(csvField("a,b"), QString("\"a,b\""));
    EXPECT_EQ(csvField("a\"b\n"), QString("\"a\"\"b\n\""));
    for (const char *text : {"", "a,b", "\"", "a\r\nb", "\n"}) {
        EXPECT_EQ(csvRows(csvField(text) + ",end").value(0).fields, (QStringList{text, "end"})) << text;
    }
}

struct CommandCase {
    const char *arguments;
    int faults;
};

TEST(Options, RefusesWhatIsOutOfRangeOrContradicts) {
    const CommandCase kCases[] = {
        {"", 1},
        {"watch", 1},
        {"monitor", 0},
        {"monitor --passes 1 --format json --remote-node 255 --frame-limit 125", 0},
        {"monitor --passes 1 --seconds 1", 1},
        {"monitor --passes 0", 1},
        {"monitor --passes 1 --passes 2", 1},
        {"monitor --format xml --parity mark --stop-bits 3 --baud x --timeout 0 --retries -1 --frame-limit 126", 7},
        {"monitor --remote-node 256", 1},
        {"monitor --port /dev/ttyS0 --faults late=1", 1},
        {"monitor --faults lost=1", 1},
        {"monitor extra", 1},
        {"monitor --bogus", 1},
        {"read 7 100", 0},
        {"read 7", 1},
        {"read 7 100 5", 1},
        {"read 22 100", 1},
        {"read 0 8", 1},
        {"read 7 100 --count 0", 1},
        {"read 7 100 --station 248", 1},
        {"read 7 100 --station 0", 1},
        {"read 7 100 --count 2000 --frame-limit 1", 1},
        {"read 7 100 --count 1000 --frame-limit 1", 0},
        {"write 7 100", 1},
        {"write 7 100 -5 0xff 3", 0},
        {"write 7 100 70000 x 3", 2},
        {"write 13 0 -2147483648", 0},
        {"write 1 0 on off", 0},
        {"simulate --stations 1,247 --seconds 1", 0},
        {"simulate --stations 1,1,0,x", 3},
        {"simulate --port /dev/ttyS0", 1},
        {"simulate --link a --second-link a", 1},
    };
    for (const CommandCase &c : kCases) {
        QStringList arguments{"dravo-host"};
        arguments += QString(c.arguments).split(' ', Qt::SkipEmptyParts);
        const ParsedOptions parsed = parseOptions(arguments);
        EXPECT_EQ(parsed.faults.size(), c.faults) << c.arguments << '\n' << parsed.faults.join('\n').toStdString();
    }
    const Options negative =
        parseOptions({"dravo-host", "write", "7", "100", "-5", "3", "--station", "9", "-7"}).options;
    EXPECT_EQ(negative.values, (QStringList{"-5", "3", "-7"}));
    EXPECT_EQ(negative.variable.station, 9);
}

}  // namespace
