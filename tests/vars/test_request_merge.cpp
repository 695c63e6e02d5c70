#include "support/driver_scene.h"

namespace {

using ListFunction = void (*)(QList<RW_VAR> &list, RW_VAR &var);

/// The entries that add makes of a request, which ends up as the last of them.
std::string added(ListFunction add, const std::string &text) {
    QList<RW_VAR> list;
    RW_VAR work = record(text);
    add(list, work);
    EXPECT_EQ(listText({work}), listText({list.last()}));
    return listText(list);
}

/// What becomes of the last entry when its count is revised.
std::string revised(const std::string &last, int count) {
    QList<RW_VAR> list = records("1@5+5 " + last);
    RW_VAR work = list.last();
    work.count = count;
    work.ownerId = 9;  // of the last entry only the count changes
    function_rw_var_revise(list, work);
    return listText(list).substr(6);
}

TEST(RequestMerge, EveryTypeIsCutExactlyAtItsBound) {
    static const int kBounds[22] = {0, 0, 2048, 256, 1024, 256, 256, 0, 256, 256, 0, 0, 0, 256};  // 0: never cut
    for (int type = -1; type < 23; ++type) {
        for (const int bound : {256, 1024, 2048, 8000}) {
            const auto entry = [type](int address, int count, const char *owner = "") {
                return std::to_string(type) + "@" + std::to_string(address) + "+" + std::to_string(count) + owner;
            };
            const bool cut = type >= 0 && type < 22 && kBounds[type] == bound;
            if (cut) {
                const std::string below = entry(bound - 2, 2) + " ";
                EXPECT_EQ(added(function_rw_var_add_read, entry(bound - 2, 3)), below + entry(bound, 1));
                EXPECT_EQ(revised(entry(bound - 2, 1), 3), below + entry(bound, 1, ":9/0"));
            }
            const std::string upToBound = entry(bound - 2, cut ? 2 : 3);
            EXPECT_EQ(added(function_rw_var_add_read, upToBound), upToBound);
            EXPECT_EQ(added(function_rw_var_add_write, upToBound), upToBound);
            EXPECT_EQ(revised(entry(bound - 2, 1), cut ? 2 : 3), upToBound);
            EXPECT_EQ(added(function_rw_var_add_read, entry(bound, 3)), entry(bound, 3));
            EXPECT_EQ(added(function_rw_var_add_write, entry(bound, 3)), entry(bound, 3));
        }
    }
}

// Nothing overflows; below 1 there is nothing to cut.
const char kExtremeReads[] = R"(
    8@255+2147483647 > 8@255+1 8@256+2147483646; 8@-2147483390+2147483647 > 8@-2147483390+2147483646 8@256+1
    2@2147483647+2147483647 > 2@2147483647+2147483647; 13@-2147483648+2147483647 > 13@-2147483648+2147483647
    2@-2147483648+-2147483648 > 2@-2147483648+-2147483648; 13@255+-1 > 13@255+-1; 8@300+0 > 8@300+0)";

// Data short, exact and long; bits that move inside their bytes.
const char kWrites[] = R"(
    9@250+10=000102030405060708090a0b0c0d0e0f10111213 > 9@250+6=000102030405060708090a0b 9@256+4=0c0d0e0f10111213
    8@255+2=341278 > 8@255+1=3412 8@256+1=78; 8@254+3=3412 > 8@254+2=3412 8@256+1
    13@255+2=0102030405060708 > 13@255+1=01020304 13@256+1=05060708; 3@248+16=a53c > 3@248+8=a5 3@256+8=3c
    3@253+16=a53c > 3@253+3=a5 3@256+13=9407; 3@253+16=a5 > 3@253+3=a5 3@256+13=1400
    2@2047+10=ff03 > 2@2047+1=ff 2@2048+9=ff01; 10@255+2=34127856ff > 10@255+2=34127856ff)";

TEST(RequestMerge, ExtremeReadsAndDataOfWrites) {
    for (const Row &row : rows(kExtremeReads)) {
        EXPECT_EQ(added(function_rw_var_add_read, row[0]), row[1]);
    }
    EXPECT_EQ(revised("13@255+1", 2147483647), "13@255+1 13@256+2147483646:9/0");
    for (const Row &row : rows(kWrites)) {
        EXPECT_EQ(added(function_rw_var_add_write, row[0]), row[1]);
    }
}

// Count, limit, entries. The caller's record ends up as the last of them.
const char kCuts[] = R"(
    70 > 32 > 8@10+32 8@42+32 8@74+6; 64 > 32 > 8@10+32 8@42+32; 33 > 32 > 8@10+32 8@42+1; 32 > 32 > 8@10+5
    0 > 32 > 8@10+5; -70 > 32 > 8@10+5; 3 > 0 > 8@10+1 8@11+1 8@12+1; 2 > -2147483648 > 8@10+1 8@11+1
    300 > 250 > 8@10+250 8@260+50)";

TEST(RequestMerge, WhetherGroupCutsByLimitAlone) {
    for (const Row &row : rows(kCuts)) {
        QList<RW_VAR> list;
        RW_VAR var = record("8@10+5");
        WhetherGroup(row.number(0), row.number(1), &var, &list);
        EXPECT_EQ(listText(list), row[2]);
        EXPECT_EQ(listText({var}), listText({list.last()}));
    }
}

}  // namespace
