#include "vars/cyclic_list.h"

#include "support/record_text.h"

namespace {

TEST(AddressText, EveryRule) {
    for (const TableRow &row : table(cases("vars/address_text", "texts"))) {
        const QString text = QString::fromLatin1(row["text given"]);
        EXPECT_EQ(StringAddressToInt(row.number("type"), text), row.number("address")) << row.line();
        EXPECT_EQ(PLCAddressChangeIntef(row.number("type"), text), row.number("address")) << row.line();
    }
}

TEST(CyclicList, Groups) {
    ComInfo comInfo = ComInfo();
    comInfo.useVarStation = 1;
    expectColumn(cases("vars/cyclic_list", "groups"), "groups", [&comInfo](const TableRow &row) {
        std::string text;
        for (const QList<RW_VAR> &group : sortedGroups(hostEntries(row["given"]), comInfo)) {
            text += (text.empty() ? "" : ", ") + listText(group);
        }
        return text;
    });
    comInfo.useVarStation = 0;
    const QList<ReadVarEntry> entries = hostEntries("2/7@103+40 0/12@100+2");
    EXPECT_TRUE(sortedGroups(entries, comInfo).isEmpty());
    comInfo.defaultStation = 300;
    comInfo.remoteMode = 3;
    comInfo.localNode = 4;
    const QList<RW_VAR> group = sortedGroups(entries, comInfo).value(0);
    EXPECT_EQ(listText(group), "300/7@100+2^4 300/7@103+40^4");
    EXPECT_EQ(otherFields(group.at(0)), "v1, 100: -1 0 3 0 0 0");
}

TEST(CyclicList, SortIsStableAndSigned) {
    QList<RW_VAR> many;
    for (int i = 0; i < 100; ++i) {
        many.append(record("7@" + std::to_string((i % 3 - 1) * INT_MAX) + "+" + std::to_string(i)));
    }
    Bubble_Sort(&many);
    for (int i = 1; i < 100; ++i) {
        const RW_VAR &before = many.at(i - 1), &after = many.at(i);
        EXPECT_LT(std::pair(before.address, before.count), std::pair(after.address, after.count));
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
