#include "support/record_text.h"

namespace {

// Start addresses at both sides of every bound, and what the variable at 37, count 3, is normalised to.

TEST(ElementTypes, EveryCode) {
    for (const TableRow &row : table(cases("codec/element_types", "types"))) {
        SCOPED_TRACE(row.line());
        int code = row.number("code");
        EXPECT_EQ(getPlcReg(code), row.number("register"));
        for (const char *title : {"0", "255", "256", "1023", "1024", "2047", "2048", "7999", "8000"}) {
            int address = std::stoi(title);
            EXPECT_EQ(get_offset_address(code, address), row.number(title));
            EXPECT_EQ(code, row.number("code"));
            EXPECT_EQ(address, std::stoi(title));
        }
        RW_VAR var = record(row.text("code") + "@37+3");
        EXPECT_EQ(updateRwVar(&var), code < 0 || code > 21 ? 1 : 0);
        EXPECT_EQ(listText({var}), row.text("37+3"));
    }
    for (const TableRow &row : table(cases("codec/element_types", "normalised variable"))) {
        RW_VAR var = record(row["given"]);
        updateRwVar(&var);
        EXPECT_EQ(listText({var}), row.text("normalised")) << row.line();
    }
}

}  // namespace
