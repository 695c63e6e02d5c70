#include "support/record_text.h"

namespace {

TEST(AddressText, EveryRule) {
    for (const TableRow &row : table(cases("vars/address_text", "texts"))) {
        const QString text = QString::fromLatin1(row["text given"]);
        EXPECT_EQ(StringAddressToInt(row.number("type"), text), row.number("address")) << row.line();
        EXPECT_EQ(PLCAddressChangeIntef(row.number("type"), text), row.number("address")) << row.line();
    }
}

}  // namespace
