#include "vars/cyclic_list.h"

#include "support/record_text.h"

namespace {

const char kGroups[] = R"(
    variables                        | given                                  | groups
    stations, then types             | 2/7@5+1 7@9+1 0@7+1 255/7@1+1 8@10+1   | 0@7+1, 7@9+1, 8@10+1, 2/7@5+1, 255/7@1+1
    types that become one            | 7@100+2 12@102+3 15@106.3+1            | 7@100+2 7@102+4 7@106+1
    by address                       | 1@20+1 1@7+1 1@10+1 1@7+2              | 1@7+1 1@7+2 1@8+1 1@16+1
    station 0                        | 0/7@6+1                                |
    unknown types                    | 22@6+1 255@6+1                         |
    texts that do not convert        | 7@x+1 1@8+1 7@-6+1 15@6+1 7@6+1        | 7@6+1
    too many elements                | 7@6+1048577 1@6+2147483647 7@6+1048576 | 7@6+1048576
    none and fewer                   | 7@6+0 7@100+-5                         | 7@6+0 7@100+-5)";

TEST(CyclicList, Groups) {
    expectColumn(kGroups, "groups", [](const TableRow &row) {
        ComInfo comInfo = ComInfo();
        comInfo.useVarStation = 1;
        std::string text;
        for (const QList<RW_VAR> &group : sortedGroups(hostEntries(row["given"]), comInfo)) {
            text += (text.empty() ? "" : ", ") + listText(group);
        }
        return text;
    });
}

TEST(CyclicList, SettingsAndTextsInTheRecords) {
    ComInfo comInfo = ComInfo();
    comInfo.remoteMode = 3;
    comInfo.localNode = 4;
    comInfo.defaultStation = 300;
    const QList<ReadVarEntry> entries = hostEntries("2/7@103+40 0/12@100+2");
    const QList<RW_VAR> group = sortedGroups(entries, comInfo).value(0);
    EXPECT_EQ(listText(group), "300/7@100+2^4 300/7@103+40^4");
    const RW_VAR &first = group.at(0);
    EXPECT_EQ(first.label, QString::fromLatin1("v1"));
    EXPECT_EQ(first.addressText, QString::fromLatin1("100"));
    EXPECT_EQ(first.itemId, -1);
    EXPECT_EQ(first.remoteMode, 3);
    for (const int zero : {first.ownerId, first.accessFlag, first.retValue, first.param1, first.param2}) {
        EXPECT_EQ(zero, 0);
    }
    comInfo.defaultStation = 0;
    EXPECT_TRUE(sortedGroups(entries, comInfo).isEmpty());
}

TEST(CyclicList, SortIsStableAndSigned) {
    QList<RW_VAR> many = records("7@2147483647+1 7@-2147483648+1");
    for (int i = 0; i < 100; ++i) {
        many.append(record("7@" + std::to_string(-(i % 2)) + "+" + std::to_string(i)));
    }
    Bubble_Sort(&many);
    EXPECT_EQ(listText({many.first(), many.last()}), "7@-2147483648+1 7@2147483647+1");
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(many.at(i + 1).count, i < 50 ? 2 * i + 1 : 2 * (i - 50));
    }
}

const char kMerged[] = R"(
    group                             | limit      | sorted                         | requests
    gap between two                   | 32         | 7@100+2 7@103+4                | 7@100+7
    same address                      | 32         | 7@100+2 7@100+5                | 7@100+5
    starts at the reach               | 32         | 7@100+2 7@132+2                | 7@100+2 7@132+2
    starts before the reach           | 32         | 7@100+2 7@131+1                | 7@100+32
    reaches beyond the limit          | 32         | 7@100+2 7@131+2                | 7@100+32 7@132+1
    nested, then at the end           | 32         | 7@100+20 7@105+2 7@119+2       | 7@100+21
    the rest goes on growing          | 32         | 7@100+30 7@125+10 7@160+4      | 7@100+32 7@132+32
    longer than the limit             | 32         | 7@0+70                         | 7@0+32 7@32+32 7@64+6
    no limit                          | 2147483647 | 1@0+1000 1@2000+3              | 1@0+2003
    none                              | 32         | 7@6+0 7@100+-5 7@200+-2147483648 |
    words across their bound          | 32         | 8@250+40                       | 8@250+6 8@256+26 8@282+8
    bits across their bound           | 256        | 3@250+40                       | 3@250+6 3@256+34
    grown across the bound            | 32         | 8@250+2 8@254+10 8@270+2       | 8@250+6 8@256+16
    grown up to the bound             | 32         | 7@7990+2 7@7999+1              | 7@7990+10
    across the gap of type 7          | 32         | 7@7990+2 7@7999+4 7@8010+2     | 7@7990+10 7@8000+12
    limit and gap                     | 8          | 7@7990+20                      | 7@7990+8 7@7998+2 7@8000+6 7@8006+4
    double words                      | 32         | 13@254+4                       | 13@254+2 13@256+2
    beyond the last address           | 4          | 7@2147483640+2 7@2147483643+9  | 7@2147483640+4 7@2147483644+4)";

TEST(CyclicList, MergedRequests) {
    expectColumn(kMerged, "requests", [](const TableRow &row) {
        QList<RW_VAR> requests = records("7@90+10");  // of another group: never grown
        appendMerged(requests, records(row["sorted"]), row.number("limit"));
        return listText(requests.mid(1));
    });
}

}  // namespace
