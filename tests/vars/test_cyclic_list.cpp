#include "vars/cyclic_list.h"

#include "support/record_text.h"

namespace {

TEST(CyclicList, Groups) {
    expectColumn(cases("vars/cyclic_list", "groups"), "groups", [](const TableRow &row) {
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

TEST(CyclicList, MergedRequests) {
    expectColumn(cases("vars/cyclic_list", "merged"), "requests", [](const TableRow &row) {
        QList<RW_VAR> requests = records("7@90+10");  // of another group: never grown
        appendMerged(requests, records(row["sorted"]), row.number("limit"));
        return listText(requests.mid(1));
    });
}

}  // namespace
