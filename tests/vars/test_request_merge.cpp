#include <climits>

#include "support/driver_scene.h"

namespace {

// Bound of each type; 0: never cut.
const int kBounds[22] = {0, 0, 2048, 256, 1024, 256, 256, 0, 256, 256, 0, 0, 0, 256};

std::string read(const RW_VAR &var, std::string *rest = nullptr) {
    QList<RW_VAR> list;
    RW_VAR work = var;
    function_rw_var_add_read(list, work);
    if (rest != nullptr) {
        *rest = listText({work});
    }
    return listText(list);
}

std::string revised(const RW_VAR &last, int count, std::string *rest = nullptr) {
    QList<RW_VAR> list = {record("1@5+5"), last};
    RW_VAR work = last;
    work.count = count;
    work.ownerId = 9;  // of the last entry only the count changes
    function_rw_var_revise(list, work);
    EXPECT_EQ(list.at(1).ownerId, last.ownerId);
    if (rest != nullptr) {
        *rest = listText({work});
    }
    list.removeFirst();
    return listText(list);
}

std::string written(const RW_VAR &var, std::string *rest = nullptr) {
    QList<RW_VAR> list;
    RW_VAR work = var;
    function_rw_var_add_write(list, work);
    if (rest != nullptr) {
        *rest = listText({work});
    }
    return listText(list);
}

TEST(RequestMerge, EveryTypeIsCutExactlyAtItsBound) {
    for (int type = 0; type < 22; ++type) {
        const auto entry = [type](int address, int count) { return listText({record(type, address, count)}); };
        for (const int bound : {256, 1024, 2048, 8000}) {
            if (kBounds[type] == 0) {
                EXPECT_EQ(read(record(type, bound - 1, 2)), entry(bound - 1, 2));
                EXPECT_EQ(revised(record(type, bound - 1, 1), 2), entry(bound - 1, 2));
                EXPECT_EQ(written(record(type, bound - 1, 2)), entry(bound - 1, 2));
            } else if (kBounds[type] == bound) {
                EXPECT_EQ(read(record(type, bound - 2, 3)), entry(bound - 2, 2) + " " + entry(bound, 1));
                EXPECT_EQ(read(record(type, bound - 2, 2)), entry(bound - 2, 2));
                EXPECT_EQ(read(record(type, bound, 3)), entry(bound, 3));
                EXPECT_EQ(revised(record(type, bound - 2, 1), 3), entry(bound - 2, 2) + " " + entry(bound, 1));
                EXPECT_EQ(revised(record(type, bound - 2, 1), 2), entry(bound - 2, 2));
                EXPECT_EQ(written(record(type, bound - 2, 2)), entry(bound - 2, 2));
                EXPECT_EQ(written(record(type, bound, 3)), entry(bound, 3));
            }
        }
    }
}

TEST(RequestMerge, Reads) {
    std::string rest;
    EXPECT_EQ(read(record("2@2040+16"), &rest), "2@2040+8 2@2048+8");
    EXPECT_EQ(rest, "2@2048+8");
    EXPECT_EQ(read(record("3@250+6"), &rest), "3@250+6");
    EXPECT_EQ(rest, "3@250+6");
    EXPECT_EQ(read(record("4@1024+50")), "4@1024+50");
    EXPECT_EQ(read(record("7@7990+20")), "7@7990+20");
    EXPECT_EQ(read(record("8@300+0")), "8@300+0");
    EXPECT_EQ(read(record("-1@255+2")) + " " + read(record("258@2047+2")), "-1@255+2 258@2047+2");
}

TEST(RequestMerge, ExtremeRecordsOverflowNothing) {
    EXPECT_EQ(read(record(8, 255, INT_MAX)), "8@255+1 8@256+2147483646");
    EXPECT_EQ(read(record(8, -2147483390, INT_MAX)), "8@-2147483390+2147483646 8@256+1");
    EXPECT_EQ(revised(record("13@255+1"), INT_MAX), "13@255+1 13@256+2147483646");
    for (const int type : {2, 8, 13}) {
        for (const int count : {INT_MIN, -1, 0}) {
            EXPECT_EQ(read(record(type, INT_MIN, count)), listText({record(type, INT_MIN, count)}));
            EXPECT_EQ(written(record(type, INT_MAX, count)), listText({record(type, INT_MAX, count)}));
        }
        EXPECT_EQ(read(record(type, INT_MAX, INT_MAX)), listText({record(type, INT_MAX, INT_MAX)}));
        EXPECT_EQ(read(record(type, INT_MIN, INT_MAX)), listText({record(type, INT_MIN, INT_MAX)}));
    }
}

const char kWrites[] = R"(
    9@250+10=000102030405060708090a0b0c0d0e0f10111213 > 9@250+6=000102030405060708090a0b 9@256+4=0c0d0e0f10111213
    8@255+2=34127856 > 8@255+1=3412 8@256+1=7856; 8@255+2=341278 > 8@255+1=3412 8@256+1=78
    8@254+3=3412 > 8@254+2=3412 8@256+1; 13@255+2=0102030405060708 > 13@255+1=01020304 13@256+1=05060708
    3@248+16=a53c > 3@248+8=a5 3@256+8=3c; 3@253+16=a53c > 3@253+3=a5 3@256+13=9407
    3@253+16=a5 > 3@253+3=a5 3@256+13=1400; 2@2047+10=ff03 > 2@2047+1=ff 2@2048+9=ff01
    4@1014+12=0f0e > 4@1014+10=0f0e 4@1024+2=03; 5@247+10=ff03 > 5@247+9=ff03 5@256+1=01
    6@240+24=0102ff > 6@240+16=0102 6@256+8=ff; 10@255+2=34127856ff > 10@255+2=34127856ff; 7@7999+2=34 > 7@7999+2=34
    12@7999+1=78563412 > 12@7999+1=78563412; 3@256+9=ffffff > 3@256+9=ffffff; 3@255+1=03 > 3@255+1=03)";

TEST(RequestMerge, WritesAreCutWithTheirData) {
    for (const Row &row : rows(kWrites)) {
        std::string rest;
        const std::string entries = row[1];
        EXPECT_EQ(written(record(row[0]), &rest), entries);
        EXPECT_EQ(rest, entries.substr(entries.rfind(' ') + 1));
    }
}

std::string pieces(int count, int limit, RW_VAR *var) {
    QList<RW_VAR> list;
    WhetherGroup(count, limit, var, &list);
    return listText(list);
}

TEST(RequestMerge, WhetherGroupCutsByLimitAlone) {
    struct {
        int count, limit;
        const char *pieces, *last;
    } const kCuts[] = {{70, 32, "8@10+32 8@42+32 8@74+6", "8@74+6"},
                       {64, 32, "8@10+32 8@42+32", "8@42+32"},
                       {20, 32, "8@10+5", "8@10+5"},
                       {32, 32, "8@10+5", "8@10+5"},
                       {33, 32, "8@10+32 8@42+1", "8@42+1"},
                       {0, 32, "8@10+5", "8@10+5"},
                       {-70, 32, "8@10+5", "8@10+5"},
                       {3, 0, "8@10+1 8@11+1 8@12+1", "8@12+1"},
                       {2, INT_MIN, "8@10+1 8@11+1", "8@11+1"},
                       {300, 250, "8@10+250 8@260+50", "8@260+50"}};
    for (const auto &row : kCuts) {
        RW_VAR var = record("8@10+5");
        EXPECT_EQ(pieces(row.count, row.limit, &var), row.pieces);
        EXPECT_EQ(listText({var}), row.last);
    }
}

}  // namespace
