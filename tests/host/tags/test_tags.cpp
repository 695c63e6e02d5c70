// Tag lists, fields and values as people and spreadsheets write them: what is taken, and every fault with its place.
#include <gtest/gtest.h>

#include <random>

#include <QtCore/QTemporaryFile>

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
        a,16,9.16,1,1        | line 16, column 3 (address)
        a,16,1.-1,1,1        | line 17, column 3 (address)
        a,7,1,1,"1           | line 18, column 5 (count))")) {
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
    const QStringList many = parseTagList(kHeader + QByteArray("x\n").repeated(1000000)).faults;
    EXPECT_EQ(many.mid(20), (QStringList{"999980 lines more are not read"}));
    const QByteArray wide = QByteArray(kHeader).chopped(1) + QByteArray(",x").repeated(100000) + "\na\n";
    EXPECT_EQ(parseTagList(wide).faults.mid(20), (QStringList{"1 lines more are not read"}));
}

TEST(TagList, FindsColumnsByNameAndNamesFileAndValueInFaults) {
    const auto loaded = [](const QByteArray &text) {
        QTemporaryFile file;
        EXPECT_TRUE(file.open());
        file.write(text);
        file.close();
        TagList list = loadTagList(file.fileName());
        list.faults.replaceInStrings(QRegExp("^tag list " + file.fileName() + ": "), "");
        return list;
    };
    const QByteArray header = "unit,count,type,format,label,address,station,offset,scale\n";
    const TagList good = loaded(header + "bar,1,7,signed,a,100,2,-40,0.1\n,1,12,float,b,100,1,,");
    ASSERT_EQ(good.variables.size(), 2) << good.faults.join('\n').toStdString();
    const auto shown = [](const Tag &tag) { return valueTexts(tag.kind, tag.format, "\xff\xff\xff\xff", 1).first(); };
    EXPECT_EQ(shown(good.variables.at(0)) + good.variables.at(0).format.unit, QString("-40.1bar"));
    EXPECT_EQ(shown(good.variables.at(1)) + good.variables.at(1).format.unit, QString("nan:0xffffffff"));
    const char kBad[] =
        "\x1b[31m123456789012345678901234567890123456,0,0,hex,c,8,1,,2\n"
        ",1,7,float,d,-1,1,1.,-0.0\n"
        ",1,13,octal,\"e\nf\",1,x,,\n"
        ",1,16,,g,2.20,1,0.000000001,\n"
        "last";
    EXPECT_EQ(loaded(header + kBad).faults.join('\n').toStdString(),
              R"(line 2, column 6 (address): '8' is no address of type 0, which takes an octal number
line 2, column 2 (count): '0' must be 1 to 2000
line 2, column 4 (format): 'hex' does not go with bits, which are shown as 0 and 1: dec
line 2, column 9 (scale): '2' does not go with bits
line 2, column 1 (unit): ' [31m12345678901234567890123456789012345...' has more than 16 characters
line 3, column 6 (address): '-1' is no address of type 7, which takes a decimal number
line 3, column 4 (format): 'float' does not go with registers of 16 bits: dec, signed, hex or binary
line 3, column 9 (scale): '-0.0' must not be 0
line 3, column 8 (offset): '1.' is no decimal number such as 0.1 or -40
line 4, column 7 (station): 'x' is no whole number
line 4, column 4 (format): 'octal' must be one of dec, signed, hex, binary, float
line 6, column 6 (address): '2.20' has a bit number that is not 0 to 15; bit 20 from word 2 on is 3.4
line 6, column 8 (offset): '0.000000001' has more than 8 decimals, too many for a scale of 1
line 7, column 1 (unit): the line has 1 field instead of 9)");
    EXPECT_EQ(
        loaded("count,unit,Scale,station,type,unit,label\na,7").faults.join('\n').toStdString(),
        R"(line 1, column 3 (extra): 'Scale' is no column of a tag list: label,type,address,station,count,format,scale,offset,unit
line 1, column 6 (unit): 'unit' is there twice
line 1: there is no column address)");
}

TEST(CsvField, ReadsBackAsItWas) {
    for (const char *text : {"", "a,b", "\"", "a\"b\r\n", "\n", "\ra"}) {
        const QString line = csvField(text) + ",end";
        CsvRow row;
        EXPECT_TRUE(CsvReader(line).next(&row));
        EXPECT_EQ(row.fields, (QStringList{text, "end"})) << text;
    }
}

ValueFormat formatOf(dravo::ValueKind kind, const FormatTexts &texts) {
    ValueFormat format;
    for (const dravo::VariableFault &fault : readFormat(texts, kind, &format)) {
        ADD_FAILURE() << fault.reason.toStdString();
    }
    return format;
}

TEST(ValueText, ReadsBothEndsOfEveryRange) {
    // kind: bit, register, 32-bit value.
    for (const TableRow &row : table(R"(
        kind | as     | scale     | offset | taken                             | bytes                    | shown                                 | refused
        0    |        |           |        | on,OFF,1,0x0                      | 01000100                 | 1,0,1,0                               | 2,-1
        1    |        |           |        | 65535,-32768,0xABcd,0b101         | ffff0080cdab0500         | 65535,32768,43981,5                   | 65536,-32769, 1,1 ,on,,0x,0x-1,1.5,0b2
        2    | dec    |           |        | 4294967295,-2147483648,0x12345678 | ffffffff0000008078563412 | 4294967295,2147483648,305419896       | 4294967296,-2147483649,0x100000000
        1    | signed |           |        | -32768,32767,0xffff               | 0080ff7fffff             | -32768,32767,-1                       | 32768,-32769,0x10000
        2    | signed |           |        | -2147483648,2147483647            | 00000080ffffff7f         | -2147483648,2147483647                | 2147483648
        1    | hex    |           |        | 0xfF,0b1                          | ff000100                 | 0x00ff,0x0001                         | 10,ff,0x10000
        1    | binary |           |        | 0b1010,0xffff                     | 0a00ffff                 | 0b0000000000001010,0b1111111111111111 | 1010,0b11111111111111111
        2    | float  |           |        | .10,-0.0,1e-45,-inf,nan,16777217  | cdcccc3d0000008001000000000080ff0000c07f0000804b | 0.1,-0,1e-45,-inf,nan,16777216 | 0x1,1e39,1e-46,1x,NAN(1),nan:0x7f800000,nan:,1+
        1    |        | 0.1       | -40    | -40,6513.5,-1.00                  | 0000ffff8601             | -40.0,6513.5,-1.0                     | -40.1,6513.6,0.05,1e1,-40.000001,0x1,,.5
        1    | signed | -2.50     |        | 81920,-81917.5,0                  | 0080ff7f0000             | 81920.00,-81917.50,0.00               | 81920.01,-81917.51,1,99999999999999999999999
        2    | signed | 999999999 | -999999999999999999 | 1147483644852516354,-3147483645852516351 | ffffff7f00000080 | 1147483644852516354,-3147483645852516351 | 1147483644852516355,-3147483645852516352,1,-9223372036854775808.1)")) {
        SCOPED_TRACE(row.line());
        const auto kind = dravo::ValueKind(row.number("kind"));
        const ValueFormat format = formatOf(kind, {row["as"], row["scale"], row["offset"], QString()});
        const QStringList taken = QString(row["taken"]).split(',');
        const QStringList refused = QString(row["refused"]).split(',');
        const TypedValues values = valueBytes(kind, format, taken + refused);
        EXPECT_EQ(values.bytes.toHex(), row["bytes"]);
        EXPECT_EQ(values.faults.size(), refused.size()) << values.faults.join('\n').toStdString();
        EXPECT_EQ(valueTexts(kind, format, values.bytes, taken.size()).join(','), row["shown"]);
    }
    EXPECT_EQ(valueAt(dravo::WordValue, QByteArray::fromHex("0100ff"), 1), 255U) << "half a value";
}

TEST(ValueText, TakesBackWhatItShows) {
    std::mt19937_64 random(1);
    const auto decimal = [&random](int digits, int decimals) {
        quint64 most = 9;
        for (int i = int(random() % quint64(digits)); i > 0; --i) {
            most = most * 10 + 9;
        }
        QString text = QString::number(1 + random() % most).rightJustified(decimals + 1, '0');
        text.insert(text.size() - decimals, '.');
        return (random() % 2 == 0 ? "-" : "") + (decimals == 0 ? text.chopped(1) : text);
    };
    for (int i = 0; i < 300000; ++i) {
        const auto kind = i % 3 == 0 ? dravo::WordValue : dravo::DoubleWordValue;
        const int notation = int(random() % (kind == dravo::WordValue ? 4 : 5));
        FormatTexts texts{notationNames().at(notation), {}, {}, {}};
        if (notation < 2 && i % 2 == 0) {
            const int decimals = int(random() % 16);
            texts.scale = decimal(9, decimals);
            texts.offset = decimal(18, decimals);
        }
        const ValueFormat format = formatOf(kind, texts);
        // All over, or near an end: a pattern of zeros or ones but for the lowest bits and the highest.
        const quint64 any = random();
        const quint64 near = (any % 4 - 2) ^ (any & 0x80008000);
        const quint64 raw = random() % 4 == 0 ? near : any;
        QByteArray bytes;
        for (int byte = 0; byte < (kind == dravo::WordValue ? 2 : 4); ++byte) {
            bytes += char(raw >> 8 * byte & 0xff);
        }
        const QString shown = valueTexts(kind, format, bytes, 1).first();
        ASSERT_EQ(valueBytes(kind, format, {shown}).bytes.toHex(), bytes.toHex()) << shown.toStdString();
    }
}

TEST(ValueText, OffersTheScaledValuesAroundATypedOne) {
    expectColumn(
        R"(
        as     | scale | offset | typed   | offered
        dec    | 0.1   | -40    | 6513.51 | -40.0 to 6513.5
        dec    | 0.1   | -40    | -0.05   | -0.1 or 0.0
        dec    | 0.1   | -40    | 0.05    | 0.0 or 0.1
        signed | 2.5   | 0.5    | 0       | -2.0 or 0.5
        signed | 2.5   | 0.5    | -2.01   | -4.5 or -2.0
        signed | -2.5  | 0.5    | -1.99   | -2.0 or 0.5
        signed | -2.5  | 0.5    | -2.01   | -4.5 or -2.0
        signed | -2.5  | 0.5    | 0.51    | 0.5 or 3.0
        signed | -2.5  |        | 1       | 0.0 or 2.5)",
        "offered", [](const TableRow &row) {
            const ValueFormat format = formatOf(dravo::WordValue, {row["as"], row["scale"], row["offset"], QString()});
            const QString fault = valueBytes(dravo::WordValue, format, {row["typed"]}).faults.value(0);
            return fault.section(" give ", 1).toStdString();
        });
}

}  // namespace
