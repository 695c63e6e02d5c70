// The tag list as people and spreadsheets write it: what is taken, and every
// fault with its line and column.
#include <gtest/gtest.h>

#include "host/tag_list.h"
#include "host/value_states.h"
#include "korvel_dravo_port.h"
#include "support/frame_text.h"

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
    for (const Variable &variable : list.variables) {
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
        {"a,-1,100,1,2\n", {"line 6, column 2 (type): "}},
        {"a,word,100,1,2\n", {"line 7, column 2 (type): "}},
        {"a,0,8,1,1\n", {"line 8, column 3 (address): "}},
        {"a,15,12,1,1\n", {"line 9, column 3 (address): "}},
        {"a,7,-1,1,1\n", {"line 10, column 3 (address): "}},
        {"a,7,23535,1,2\n", {"line 11, column 3 (address): "}},
        {"a,1,177777,1,2\n", {"line 12, column 3 (address): "}},
        {"a,15,23535.15,1,2\n", {"line 13, column 3 (address): "}},
        {"a,13,28023,1,2\n", {"line 14, column 3 (address): "}},
        {"a,7,2147483647,1,2000\n", {"line 15, column 3 (address): "}},
        {"a,7,1,0,1\n", {"line 16, column 4 (station): "}},
        {"a,7,1,248,2001\n", {"line 17, column 4 (station): ", "line 17, column 5 (count): "}},
        {"a,7,1,1,0\n", {"line 18, column 5 (count): "}},
        {",99,x,y,1\n", {"line 19, column 1 (label): ", "line 19, column 4 (station): ", "line 19, column 2 (type): "}},
        {"a\"b,7,1,1,1\n", {"line 20, column 1 (label): a quote"}},
        {"a,\"7\"x,1,1,1\n", {"line 21, column 2 (type): text after"}},
        {"\"a\nb\",7,1,1,0\n", {"line 22, column 5 (count): "}},
        {"a,7,1,1,\"1\nb", {"line 24, column 5 (count): the closing"}},
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

// Type 7, station 1: 100 to 109 read at 1000 ms, 110 to 119 at 4000 ms and
// failing since, 120 to 129 failed only.
TEST(ValueStates, FollowTheRequestsThatCoverAVariable) {
    ValueStates states;
    const auto stateOf = [&](const Variable &variable) { return states.stateOf(variable, 5000, 3000); };
    const Variable last{QString(), 7, "119", 1, 1};
    states.finished({1, 7, 100, 10}, kResultGood, 0, 1000);
    states.finished({1, 7, 110, 10}, kResultGood, 0, 4000);
    EXPECT_EQ(conditionName(stateOf(last).condition), QString("fresh"));
    states.finished({1, 7, 110, 10}, 71, 2, 4500);
    states.finished({1, 7, 120, 10}, 41, 0, 4600);
    // name > type, address and count > condition and age > a digit per value:
    // whether it was read
    for (const Row &row : rows(R"(
             before the first request             >  7 > 99     > 1 > never read >   -1 > 0
             first element                        >  7 > 100    > 1 > stale      > 4000 > 1
             across a gap at the start            >  7 > 98     > 4 > never read >   -1 > 0011
             over two requests, one failing       >  7 > 109    > 2 > failing    > 4000 > 11
             partly never read                    >  7 > 119    > 2 > failing    >   -1 > 10
             32-bit value over two requests       > 12 > 119    > 1 > failing    >   -1 > 0
             second of two 32-bit values not read > 12 > 117    > 2 > failing    >   -1 > 10
             bits of two words                    > 15 > 99.15  > 2 > never read >   -1 > 01
             bits of one word                     > 15 > 100.14 > 2 > stale      > 4000 > 11
             another type                         >  8 > 100    > 1 > never read >   -1 > 0)")) {
        const Variable variable{QString(), row.number(1), row[2], 1, row.number(3)};
        EXPECT_EQ(conditionName(stateOf(variable).condition), QString(row[4])) << row[0];
        EXPECT_EQ(stateOf(variable).ageMs, row.number(5)) << row[0];
        QString read;
        for (const bool known : states.valuesRead(variable)) {
            read += known ? '1' : '0';
        }
        EXPECT_EQ(read, QString(row[6])) << row[0];
    }
    EXPECT_EQ(stateOf(last).code, 71);
    EXPECT_EQ(stateOf(last).exceptionCode, 2);
    states.finished({1, 7, 110, 10}, kResultGood, 0, 5000);
    EXPECT_EQ(conditionName(stateOf(last).condition), QString("fresh"));
}

}  // namespace
