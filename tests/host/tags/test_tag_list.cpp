// The tag list as people and spreadsheets write it: what is taken, and every fault with its line and column.
#include <gtest/gtest.h>

#include "host/tags/tag_list.h"

namespace {

constexpr char kHeader[] = "label,type,address,station,count\n";

TEST(TagList, TakesWhatSpreadsheetsWrite) {
    const TagList list = parseTagList(QByteArray("\xef\xbb\xbf") + kHeader +
                                      "\"a,\"\"b\"\"\",7,23535,1,1\r\n"
                                      "\r\n\n"
                                      "\"two\r\nlines\",\"15\",\"12.3\",247,2000\n"
                                      "\xc3\xb6l,1,177777,1,1");
    EXPECT_TRUE(list.faults.isEmpty()) << list.faults.join('\n').toStdString();
    QStringList tags;
    for (const dravo::Variable &variable : list.variables) {
        tags += variable.label + '|' + variable.addressText + '|' + QString::number(variable.count);
    }
    EXPECT_EQ(tags, (QStringList{"a,\"b\"|23535|1", "two\r\nlines|12.3|2000", QString::fromUtf8("\xc3\xb6l|177777|1")}))
        << tags.join('\n').toStdString();
    EXPECT_TRUE(loadTagList(QString()).faults.isEmpty()) << "the built-in sample";
}

TEST(TagList, ReportsEveryFaultWithLineAndColumn) {
    const struct {
        const char *row;
        QStringList faults;  // how each begins
    } kCases[] = {
        {"a,7,100,1\n", {"line 2, column 4 (station): "}},
        {"a,7,100,1,2,3\n", {"line 3, column 6 (extra): "}},
        {",7,100,1,2\n", {"line 4, column 1 (label): "}},
        {"a,22,100,1,2\n", {"line 5, column 2 (type): "}},
        {"a,word,100,1,2\n", {"line 6, column 2 (type): "}},
        {"a,0,8,1,1\n", {"line 7, column 3 (address): "}},
        {"a,15,12,1,1\n", {"line 8, column 3 (address): "}},
        {"a,7,23535,1,2\n", {"line 9, column 3 (address): "}},
        {"a,1,177777,1,2\n", {"line 10, column 3 (address): "}},
        {"a,15,23535.15,1,2\n", {"line 11, column 3 (address): "}},
        {"a,13,28023,1,2\n", {"line 12, column 3 (address): "}},
        {"a,7,2147483647,1,2000\n", {"line 13, column 3 (address): "}},
        {"a,7,1,0,1\n", {"line 14, column 4 (station): "}},
        {"a,7,1,248,2001\n", {"line 15, column 4 (station): ", "line 15, column 5 (count): "}},
        {",99,x,y,1\n", {"line 16, column 1 (label): ", "line 16, column 4 (station): ", "line 16, column 2 (type): "}},
        {"a\"b,7,1,1,1\n", {"line 17, column 1 (label): a quote"}},
        {"a,\"7\"x,1,1,1\n", {"line 18, column 2 (type): text after"}},
        {"\"a\nb\",7,1,1,0\n", {"line 19, column 5 (count): "}},
        {"a,7,1,1,\"1\nb", {"line 21, column 5 (count): the closing"}},
    };
    QByteArray text = kHeader;
    QStringList expected;
    for (const auto &c : kCases) {
        text += c.row;
        expected += c.faults;
    }
    const TagList list = parseTagList(text);
    EXPECT_TRUE(list.variables.isEmpty());
    ASSERT_EQ(list.faults.size(), expected.size()) << list.faults.join('\n').toStdString();
    for (int i = 0; i < expected.size(); ++i) {
        EXPECT_TRUE(list.faults.at(i).startsWith(expected.at(i))) << list.faults.at(i).toStdString();
    }
    for (const char *whole : {"", kHeader, "a,7,100,1,2\n", "label,type,address,station,count\n\xff,7,1,1,1\n"}) {
        EXPECT_EQ(parseTagList(whole).faults.size(), 1) << whole;
    }
}

}  // namespace
