// The tag list as people and spreadsheets write it: what is taken, and every fault with its line and column.
#include <gtest/gtest.h>

#include <QtCore/QSet>

#include "host/tag_list.h"
#include "host/value_states.h"
#include "korvel_dravo_port.h"

namespace {

constexpr char kHeader[] = "label,type,address,station,count\n";

struct GoodCase {
    const char *name;
    const char *rows;
    const char *labels;     // joined by |
    const char *addresses;  // joined by |
};

TEST(TagList, TakesWhatSpreadsheetsWrite) {
    const GoodCase kCases[] = {
        {"plain", "a,7,100,1,2\nb,0,17,247,2000\n", "a|b", "100|17"},
        {"no line end at the end", "a,7,100,1,2", "a", "100"},
        {"CR LF and blank lines", "a,7,100,1,2\r\n\r\n\nb,8,1,2,1\r\n", "a|b", "100|1"},
        {"comma in quotes", "\"a,b\",7,100,1,2\n", "a,b", "100"},
        {"doubled quotes", "\"say \"\"a\"\"\",7,100,1,2\n", "say \"a\"", "100"},
        {"line ends in quotes", "\"two\r\nlines\",7,100,1,2\nb,7,1,1,1\n", "two\r\nlines|b", "100|1"},
        {"all quoted", "\"a\",\"15\",\"12.3\",\"1\",\"2\"\n", "a", "12.3"},
        {"beyond ASCII", "\xc3\xb6l,7,100,1,2\n", "\xc3\xb6l", "100"},
        {"last register", "a,7,23535,1,1\n", "a", "23535"},
        {"last coil", "a,1,177777,1,1\n", "a", "177777"},
    };
    for (const GoodCase &c : kCases) {
        SCOPED_TRACE(c.name);
        for (const char *mark : {"", "\xef\xbb\xbf"}) {
            const TagList list = parseTagList(QByteArray(mark) + kHeader + c.rows);
            EXPECT_TRUE(list.faults.isEmpty()) << list.faults.join('\n').toStdString();
            QStringList labels;
            QStringList addresses;
            for (const Variable &variable : list.variables) {
                labels.append(variable.label);
                addresses.append(variable.addressText);
            }
            EXPECT_EQ(labels.join('|'), QString::fromUtf8(c.labels));
            EXPECT_EQ(addresses.join('|'), QString(c.addresses));
        }
    }
}

struct BadCase {
    const char *name;
    const char *rows;
    QStringList places;  // how each fault begins
};

TEST(TagList, ReportsEveryFaultWithLineAndColumn) {
    const BadCase kCases[] = {
        {"nothing but the header", "", {"line 2, column 1"}},
        {"too few fields", "a,7,100,1\n", {"line 2, column 4 (station)"}},
        {"too many fields", "a,7,100,1,2,3\n", {"line 2, column 6 (extra)"}},
        {"no label", ",7,100,1,2\n", {"line 2, column 1 (label)"}},
        {"no such type", "a,22,100,1,2\nb,-1,1,1,1\n", {"line 2, column 2 (type)", "line 3, column 2 (type)"}},
        {"type in words", "a,word,100,1,2\n", {"line 2, column 2 (type)"}},
        {"octal digit 8", "a,0,8,1,1\n", {"line 2, column 3 (address)"}},
        {"no bit", "a,15,12,1,1\n", {"line 2, column 3 (address)"}},
        {"negative address", "a,7,-1,1,1\n", {"line 2, column 3 (address)"}},
        {"past the last register", "a,7,23535,1,2\n", {"line 2, column 3 (address)"}},
        {"past the last coil", "a,1,177777,1,2\n", {"line 2, column 3 (address)"}},
        {"past the last word with bits", "a,15,23535.15,1,2\n", {"line 2, column 3 (address)"}},
        {"past the last 32-bit value", "a,13,28023,1,2\n", {"line 2, column 3 (address)"}},
        {"huge address", "a,7,2147483647,1,2000\n", {"line 2, column 3 (address)"}},
        {"stations", "a,7,1,0,1\na,7,1,248,1\n", {"line 2, column 4 (station)", "line 3, column 4 (station)"}},
        {"counts", "a,7,1,1,0\na,7,1,1,2001\n", {"line 2, column 5 (count)", "line 3, column 5 (count)"}},
        {"a whole bad line",
         "a,7,1,1,1\n,99,x,y,0\n",
         {"line 3, column 1 (label)", "line 3, column 4 (station)", "line 3, column 2 (type)",
          "line 3, column 5 (count)"}},
        {"quote in the middle", "a\"b,7,1,1,1\n", {"line 2, column 1 (label): a quote"}},
        {"text after a quote", "a,\"7\"x,1,1,1\n", {"line 2, column 2 (type): text after"}},
        {"quote never closed", "a,7,1,1,\"1\nb,7,1,1,1\n", {"line 2, column 5 (count): the closing"}},
        {"line numbers pass quoted lines", "\"a\nb\",7,1,1,1\nc,7,1,1,0\n", {"line 4, column 5 (count)"}},
    };
    for (const BadCase &c : kCases) {
        SCOPED_TRACE(c.name);
        const TagList list = parseTagList(QByteArray(kHeader) + c.rows);
        ASSERT_EQ(list.faults.size(), c.places.size()) << list.faults.join('\n').toStdString();
        for (int i = 0; i < c.places.size(); ++i) {
            EXPECT_TRUE(list.faults.at(i).startsWith(c.places.at(i))) << list.faults.at(i).toStdString();
        }
    }
    for (const char *text : {"", "a,7,100,1,2\n", "label;type;address;station;count\n"}) {
        EXPECT_EQ(parseTagList(text).faults.size(), 1) << text;
    }
    EXPECT_EQ(parseTagList(QByteArray(kHeader) + "\xff,7,1,1,1\n").faults,
              QStringList("the tag list is not UTF-8 text"));
}

TEST(TagList, BuiltInSampleHasAllClassesAndThreeStations) {
    const TagList list = loadTagList(QString());
    EXPECT_TRUE(list.faults.isEmpty());
    QSet<int> stations;
    QSet<int> types;
    for (const Variable &variable : list.variables) {
        stations.insert(variable.station);
        types.insert(variable.elemType);
    }
    EXPECT_EQ(stations, (QSet<int>{1, 2, 3}));
    for (const int type : {0, 7, 13, 12, 15}) {
        EXPECT_TRUE(types.contains(type)) << type;
    }
}

using Condition = ValueState::Condition;

struct StateCase {
    const char *name;
    int elemType;
    const char *address;
    int count;
    Condition condition;
    qint64 ageMs;
    const char *read;  // one digit per value
};

// Type 7, station 1: 100 to 109 read at 1000 ms, 110 to 119 at 4000 ms and failing since, 120 to 129 failed only.
TEST(ValueStates, FollowTheRequestsThatCoverAVariable) {
    ValueStates states;
    states.finished({1, 7, 100, 10}, kResultGood, 0, 1000);
    states.finished({1, 7, 110, 10}, kResultGood, 0, 4000);
    const auto state = [&states](const Variable &v) { return states.stateOf(v, 5000, 3000); };
    const auto variable = [](int elemType, const char *address, int count) {
        Variable v;
        v.elemType = elemType;
        v.addressText = address;
        v.count = count;
        return v;
    };
    EXPECT_EQ(state(variable(7, "115", 2)).condition, Condition::Fresh);
    states.finished({1, 7, 110, 10}, 71, 2, 4500);
    states.finished({1, 7, 120, 10}, 41, 0, 4600);

    const StateCase kCases[] = {
        {"before the first request", 7, "99", 1, Condition::NeverRead, -1, "0"},
        {"first element", 7, "100", 1, Condition::Stale, 4000, "1"},
        {"across a gap at the start", 7, "98", 4, Condition::NeverRead, -1, "0011"},
        {"over two requests, one failing", 7, "109", 2, Condition::Failing, 4000, "11"},
        {"read once, failing since", 7, "119", 1, Condition::Failing, 1000, "1"},
        {"partly never read", 7, "119", 2, Condition::Failing, -1, "10"},
        {"32-bit value over two requests", 12, "119", 1, Condition::Failing, -1, "0"},
        {"second of two 32-bit values never read", 12, "117", 2, Condition::Failing, -1, "10"},
        {"bits of two words", 15, "99.15", 2, Condition::NeverRead, -1, "01"},
        {"bits of one word", 15, "100.14", 2, Condition::Stale, 4000, "11"},
        {"another type", 8, "100", 1, Condition::NeverRead, -1, "0"},
    };
    for (const StateCase &c : kCases) {
        SCOPED_TRACE(c.name);
        const Variable v = variable(c.elemType, c.address, c.count);
        EXPECT_EQ(state(v).condition, c.condition);
        EXPECT_EQ(state(v).ageMs, c.ageMs);
        QString read;
        for (const bool known : states.valuesRead(v)) {
            read += known ? '1' : '0';
        }
        EXPECT_EQ(read, QString(c.read));
    }
    EXPECT_EQ(state(variable(7, "119", 1)).code, 71);
    EXPECT_EQ(state(variable(7, "119", 1)).exceptionCode, 2);
    states.finished({1, 7, 110, 10}, kResultGood, 0, 5000);
    EXPECT_EQ(state(variable(7, "119", 1)).condition, Condition::Fresh);
}

}  // namespace
