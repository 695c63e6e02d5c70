#include "codec/element_types.h"

#include "support/record_text.h"

namespace {

// Start addresses at both sides of every bound, and what the variable at 37, count 3, is normalised to.
const char kTypes[] = R"(
    type              | code | register |     0 |   255 |   256 |  1023 |  1024 |  2047 |  2048 |  7999 |  8000 | 37+3
    bit, octal        |    0 |        0 |  1200 |  1455 |  1456 |  2223 |  2224 |  3247 |  3248 |  9199 |  9200 | 0@37+3
    bit, octal        |    1 |        1 |     0 |   255 |   256 |  1023 |  1024 |  2047 |  2048 |  7999 |  8000 | 1@37+3
    bit, cut at 2048  |    2 |        2 |  2000 |  2255 |  2256 |  3023 |  3024 |  4047 | 12000 | 17951 | 17952 | 2@37+3
    bit, cut at 256   |    3 |        3 |  4400 |  4655 | 30000 | 30767 | 30768 | 31791 | 31792 | 37743 | 37744 | 3@37+3
    bit, cut at 1024  |    4 |        4 |  6000 |  6255 |  6256 |  7023 | 31000 | 32023 | 32024 | 37975 | 37976 | 4@37+3
    bit, cut at 256   |    5 |        5 |  8000 |  8255 | 11000 | 11767 | 11768 | 12791 | 12792 | 18743 | 18744 | 5@37+3
    bit, cut at 256   |    6 |        6 |  9200 |  9455 | 10000 | 10767 | 10768 | 11791 | 11792 | 17743 | 17744 | 6@37+3
    word, gap at 8000 |    7 |        7 |     0 |   255 |   256 |  1023 |  1024 |  2047 |  2048 |  7999 | 50000 | 7@37+3
    word, cut at 256  |    8 |        8 |  8000 |  8255 | 12000 | 12767 | 12768 | 13791 | 13792 | 19743 | 19744 | 8@37+3
    word, cut at 256  |    9 |        9 |  9000 |  9255 | 11000 | 11767 | 11768 | 12791 | 12792 | 18743 | 18744 | 9@37+3
    word              |   10 |       10 |  9500 |  9755 |  9756 | 10523 | 10524 | 11547 | 11548 | 17499 | 17500 | 10@37+3
    word              |   11 |       11 |  8500 |  8755 |  8756 |  9523 |  9524 | 10547 | 10548 | 16499 | 16500 | 11@37+3
    word pair on 7    |   12 |        7 |     0 |   255 |   256 |  1023 |  1024 |  2047 |  2048 |  7999 | 50000 | 7@37+4
    double word       |   13 |       13 |  9300 |  9810 | 10000 | 11534 | 11536 | 13582 | 13584 | 25486 | 25488 | 13@37+2
    word pair on 8    |   14 |        8 |  8000 |  8255 | 12000 | 12767 | 12768 | 13791 | 13792 | 19743 | 19744 | 8@37+4
    bit in word of 7  |   15 |        7 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 | 7@2+1
    bit in word of 8  |   16 |        8 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 | 8@2+1
    bit in word of 11 |   17 |       11 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 | 11@2+1
    word pair on 11   |   18 |       11 |  8500 |  8755 |  8756 |  9523 |  9524 | 10547 | 10548 | 16499 | 16500 | 11@37+4
    word              |   19 |       19 | 13000 | 13255 | 13256 | 14023 | 14024 | 15047 | 15048 | 20999 | 21000 | 19@37+3
    bit in word of 19 |   20 |       19 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 | 19@2+1
    word pair on 19   |   21 |       19 | 13000 | 13255 | 13256 | 14023 | 14024 | 15047 | 15048 | 20999 | 21000 | 19@37+4
    none below        |   -1 |       -1 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 | -1@37+3
    none above        |   22 |       22 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 |     0 | 22@37+3)";

TEST(ElementTypes, EveryCode) {
    for (const TableRow &row : table(kTypes)) {
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
}

TEST(ElementTypes, StartAddressesOfAddressesThatNoControllerHas) {
    const int cases[][3] = {
        {7, 23535, 65535}, {7, 23536, 0}, {7, INT_MAX, 41999}, {13, INT_MAX, 9486}, {13, INT_MIN, 9300}};
    for (const auto &[code, address, low16Bits] : cases) {
        EXPECT_EQ(startAddress(code, address) & 0xFFFF, low16Bits) << code << "@" << address;
    }
}

TEST(ElementTypes, NormalisedVariable) {
    const char kCases[] = R"(
        variable                      | given     | normalised
        pairs, even count             | 12@10+4   | 7@10+4
        pairs, fewer than none        | 12@10+-3  | 7@10+-2
        double words, even count      | 13@10+4   | 13@10+2
        bits across two words         | 15@15+2   | 7@0+2
        bits of one whole word        | 15@16+16  | 7@1+1
        bits, negative remainder      | 15@-17+40 | 7@-1+3)";
    expectColumn(kCases, "normalised", [](const TableRow &row) {
        RW_VAR var = record(row["given"]);
        updateRwVar(&var);
        return listText({var});
    });
}

}  // namespace
