// Values as they are typed and shown, and result codes in words.
#include "host/tags/value_text.h"

#include <gtest/gtest.h>

#include "host/tags/csv_text.h"
#include "host/tags/result_text.h"
#include "support/table.h"

namespace {

TEST(ValueText, ReadsBothEndsOfEveryRange) {
    const struct {
        ValueKind kind;
        QStringList taken;
        const char *bytes;  // of those taken
        QStringList shown;
        QStringList refused;
    } kCases[] = {
        {ValueKind::Bit, {"on", "OFF", "1", "0x0"}, "01000100", {"1", "0", "1", "0"}, {"2", "-1"}},
        {ValueKind::Word,
         {"65535", "-32768", "0xABcd"},
         "ffff0080cdab",
         {"65535", "32768", "43981"},
         {"65536", "-32769", "0x10000", "on", "", "0x", "0x-1", "--1", "1.5", " 1", "1 "}},
        {ValueKind::DoubleWord,
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
    EXPECT_EQ(valueAt(ValueKind::Word, QByteArray::fromHex("0100ff"), 1), 255U) << "half a value";
}

TEST(ResultText, NamesEveryCode) {
    for (const TableRow &row : table(R"(
        codes          | exception | text
        1, 100         | 0         | good
        0              | 0         | bad reply, sent again
        11,22, 111,122 | 0         | reply with a wrong station or checksum
        41,52, 141,152 | 0         | no reply
        71,82, 171,182 | 0         | reply of the wrong length
        71             | 2         | refused: illegal data address (exception 2)
        71             | 11        | refused: gateway target does not respond (exception 11)
        71             | 99        | refused: unknown exception (exception 99))")) {
        for (const QString &code : QString(row["codes"]).split(',')) {
            EXPECT_EQ(describeResult(code.toInt(), row.number("exception")), QString(row["text"])) << row.line();
        }
    }
}

TEST(CsvField, ReadsBackAsItWas) {
    for (const char *text : {"", "a,b", "\"", "a\"b\r\n", "\n"}) {
        EXPECT_EQ(csvRows(csvField(text) + ",end").value(0).fields, (QStringList{text, "end"})) << text;
    }
}

}  // namespace
