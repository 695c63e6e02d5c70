// Values as they are typed and shown.
#include "host/tags/value_text.h"

#include <gtest/gtest.h>

#include "host/tags/csv_text.h"

namespace {

TEST(ValueText, ReadsBothEndsOfEveryRange) {
    const struct {
        dravo::ValueKind kind;
        QStringList taken;
        const char *bytes;  // of those taken
        QStringList shown;
        QStringList refused;
    } kCases[] = {
        {dravo::BitValue, {"on", "OFF", "1", "0x0"}, "01000100", {"1", "0", "1", "0"}, {"2", "-1"}},
        {dravo::WordValue,
         {"65535", "-32768", "0xABcd"},
         "ffff0080cdab",
         {"65535", "32768", "43981"},
         {"65536", "-32769", "0x10000", "on", "", "0x", "0x-1", "--1", "1.5", " 1", "1 "}},
        {dravo::DoubleWordValue,
         {"4294967295", "-2147483648", "0x12345678"},
         "ffffffff0000008078563412",
         {"4294967295", "2147483648", "305419896"},
         {"4294967296", "-2147483649", "0x100000000", "99999999999999999999"}},
    };
    for (const auto &c : kCases) {
        const TypedValues values = valueBytes(c.kind, c.taken + c.refused);
        EXPECT_EQ(values.bytes.toHex(), QByteArray(c.bytes));
        EXPECT_EQ(values.faults.size(), c.refused.size()) << values.faults.join('\n').toStdString();
        EXPECT_EQ(valueTexts(c.kind, values.bytes, c.taken.size()), c.shown);
    }
    EXPECT_EQ(valueAt(dravo::WordValue, QByteArray::fromHex("0100ff"), 1), 255U) << "half a value";
}

TEST(CsvField, ReadsBackAsItWas) {
    for (const char *text : {"", "a,b", "\"", "a\"b\r\n", "\n"}) {
        EXPECT_EQ(csvRows(csvField(text) + ",end").value(0).fields, (QStringList{text, "end"})) << text;
    }
}

}  // namespace
