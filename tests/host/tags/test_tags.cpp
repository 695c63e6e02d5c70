// Tag lists, fields and values as people and spreadsheets write them: what is taken, and every fault with its place.
#include <gtest/gtest.h>

#include "host/tags/csv_text.h"
#include "host/tags/tag_list.h"
#include "host/tags/value_text.h"
#include "support/table.h"

namespace {

constexpr char kHeader[] = "label,type,address,station,count\n";

TEST(TagList, TakesWhatSpreadsheetsWrite) {
    const TagList list = parseTagList(QByteArray("\xef\xbb\xbf") + kHeader +
                                      "\"a,\"\"b\"\"\",7,23535,1,1\r\n"
                                      "\r\n\n"
                                      "\"two\r\nlines\",\"15\",\"12.3\",247,2000\n"
                                      "\xc3\xb6l,1,177777,1,1");
    QString tags = list.faults.join('\n');
    for (const dravo::Variable &variable : list.variables) {
        tags += variable.label + '|' + variable.addressText + '|' + QString::number(variable.count) + ' ';
    }
    EXPECT_EQ(tags.toStdString(), "a,\"b\"|23535|1 two\r\nlines|12.3|2000 \xc3\xb6l|177777|1 ");
    EXPECT_TRUE(loadTagList(QString()).faults.isEmpty()) << "the built-in sample";
}

TEST(TagList, ReportsEveryFaultWithLineAndColumn) {
    QByteArray text = kHeader;
    QStringList expected;
    // "&" ends a line inside a field.
    for (const TableRow &row : table(R"(
        line                 | faults
        a,7,100,1            | line 2, column 4 (station)
        a,7,100,1,2,3        | line 3, column 6 (extra)
        a,word,100,1,2       | line 4, column 2 (type)
        a,7,23535,1,2        | line 5, column 3 (address)
        a,1,177777,1,2       | line 6, column 3 (address)
        a,15,23535.15,1,2    | line 7, column 3 (address)
        a,13,28023,1,2       | line 8, column 3 (address)
        a,7,2147483647,1,999 | line 9, column 3 (address)
        a,7,1,248,2001       | line 10, column 4 (station); line 10, column 5 (count)
        ,99,x,y,1            | line 11, column 1 (label); line 11, column 4 (station); line 11, column 2 (type)
        a"b,7,1,1,1          | line 12, column 1 (label)
        a,"7"x,1,1,1         | line 13, column 2 (type)
        "a&b",7,1,1,0        | line 14, column 5 (count)
        a,7,1,1,"1           | line 16, column 5 (count))")) {
        text += row["line"] + QByteArray("\n");
        expected += row["faults"];
    }
    TagList list = parseTagList(text.replace('&', '\n').chopped(1));
    EXPECT_TRUE(list.variables.isEmpty());
    EXPECT_EQ(list.faults.replaceInStrings(QRegExp(": .*"), "").join("; ").toStdString(),
              expected.join("; ").toStdString());
    for (const char *whole : {"", kHeader, "a,7,100,1,2\n", "label,type,address,station,count\n\xff,7,1,1,1\n"}) {
        EXPECT_EQ(parseTagList(whole).faults.size(), 1) << whole;
    }
}

TEST(CsvField, ReadsBackAsItWas) {
    for (const char *text : {"", "a,b", "\"", "a\"b\r\n", "\n", "\ra"}) {
        EXPECT_EQ(csvRows(csvField(text) + ",end").value(0).fields, (QStringList{text, "end"})) << text;
    }
}

TEST(ValueText, ReadsBothEndsOfEveryRange) {
    // kind: bit, register, 32-bit value.
    for (const TableRow &row : table(R"(
        kind | taken                             | bytes                    | shown                           | refused
        0    | on,OFF,1,0x0                      | 01000100                 | 1,0,1,0                         | 2,-1
        1    | 65535,-32768,0xABcd               | ffff0080cdab             | 65535,32768,43981               | 65536,-32769, 1,1 ,on,,0x,0x-1,1.5
        2    | 4294967295,-2147483648,0x12345678 | ffffffff0000008078563412 | 4294967295,2147483648,305419896 | 4294967296,-2147483649,0x100000000)")) {
        const auto kind = dravo::ValueKind(row.number("kind"));
        const QStringList taken = QString(row["taken"]).split(',');
        const QStringList refused = QString(row["refused"]).split(',');
        const TypedValues values = valueBytes(kind, taken + refused);
        EXPECT_EQ(values.bytes.toHex(), row["bytes"]);
        EXPECT_EQ(values.faults.size(), refused.size()) << values.faults.join('\n').toStdString();
        EXPECT_EQ(valueTexts(kind, values.bytes, taken.size()).join(','), row["shown"]);
    }
    EXPECT_EQ(valueAt(dravo::WordValue, QByteArray::fromHex("0100ff"), 1), 255U) << "half a value";
}

}  // namespace
