#include "support/record_text.h"

namespace {

const char kTexts[] = R"(
    text                      |        type |                 text given |     address
    word and bit              |          15 |                       12.3 |         195
    bit above 15 carries      |          20 |                       2.20 |          52
    no bit part               |          16 |                         12 |          -1
    three parts               |          16 |                      1.2.3 |          -1
    empty bit part            |          17 |                        12. |         192
    empty word part           |          17 |                         .5 |           5
    word is no number         |          17 |                        x.3 |           3
    word beyond an int        |          15 |              99999999999.3 |           3
    last bit address          |          15 |               134217727.15 |  2147483647
    one bit further           |          15 |               134217727.16 |          -1
    one bit before            |          15 |              -134217728.-1 |          -1
    octal                     |           0 |                         17 |          15
    octal, largest digits     |           1 |                        777 |         511
    no octal digit            |           1 |                          8 |          -1
    first decimal type        |           2 |                         10 |          10
    decimal, leading zeros    |           7 |                       0010 |          10
    decimal, no hexadecimal   |           7 |                       0x10 |          -1
    decimal, empty            |           7 |                            |          -1
    last address              |           7 |                 2147483647 |  2147483647
    beyond an int             |           7 |                 2147483648 |          -1
    between bit-in-word types |          18 |                          8 |           8
    last type is decimal      |          21 |                        5.1 |          -1
    unknown type, decimal     |          22 |                         10 |          10)";

TEST(AddressText, EveryRule) {
    for (const TableRow &row : table(kTexts)) {
        const QString text = QString::fromLatin1(row["text given"]);
        EXPECT_EQ(StringAddressToInt(row.number("type"), text), row.number("address")) << row.line();
        EXPECT_EQ(PLCAddressChangeIntef(row.number("type"), text), row.number("address")) << row.line();
    }
}

}  // namespace
