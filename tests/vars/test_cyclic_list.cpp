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

TEST(CyclicList, MergedRequests) {
    ComInfo comInfo = ComInfo();
    comInfo.useVarStation = 1;
    expectColumn(cases("vars/cyclic_list", "merged"), "requests", [&comInfo](const TableRow &row) {
        comInfo.maxGroupLength = row.number("limit");
        return listText(cyclicRequests(hostEntries(row["given"]), comInfo));
    });
}

TEST(CyclicList, OneStationForAllAndTheHostsOrderAtOneAddress) {
    ComInfo comInfo = ComInfo();
    comInfo.maxGroupLength = 32;
    std::string many = "2/7@103+40 0/12@100+2";
    for (int i = 0; i < 100; ++i) {
        many += " 7@" + std::to_string(1000 + 40 * (i % 3)) + "+2";
    }
    EXPECT_TRUE(cyclicRequests(hostEntries(many), comInfo).isEmpty());
    comInfo.defaultStation = 300;
    comInfo.remoteMode = 3;
    comInfo.localNode = 4;
    const QList<RW_VAR> requests = cyclicRequests(hostEntries(many), comInfo);
    EXPECT_EQ(listText(requests), "300/7@100+32^4 300/7@132+11^4 300/7@1000+2^4 300/7@1040+2^4 300/7@1080+2^4");
    EXPECT_EQ(otherFields(requests.at(0)), "v1, 100: -1 0 3 0 0 0");
    EXPECT_EQ(otherFields(requests.at(4)), "v4, 1080: -1 0 3 0 0 0");
}

}  // namespace
