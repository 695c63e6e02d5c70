#include "cache/host_values.h"

#include "cache/written_values.h"
#include "support/record_text.h"

namespace {

const char kReads[] = R"(
    read                       | variable          | values
    words                      | 7@10+2            | 02010403
    pair, low half first       | 12@10+2           | 04030201
    pairs, odd count           | 12@10+3           | 0403020108070605
    bits of two words          | 15@168+11         | 0100000000000000000001
    double words, odd count    | 13@5+3            | 1122334455667788
    bits                       | 1@7+3             | 010001
    double word never seen     | 13@500+1          | 00000000
    bits of a word never seen  | 20@8005+2         | 0000
    fewer than none            | 12@10+-1          |
    far fewer                  | 15@160+-2147483648 |
    unknown type               | 22@10+3           | 000000000000)";

TEST(HostValues, Read) {
    ValueCache cache;
    for (RW_VAR var : records("7@10+4=0201040306050807 13@5+2=1122334455667788 1@7+3=05")) {
        storeWritten(cache, var);
    }
    for (const TableRow &row : table(kReads)) {
        const RW_VAR var = record(row["variable"]);
        EXPECT_EQ(cachedValues(cache, var.elemType, var.station, var.address, var.count), bytes(row["values"]))
            << row.line();
    }
    EXPECT_EQ(cachedValues(cache, 22, 1, 1, kMaxElementCount).size(), 2 * kMaxElementCount);
    cache.clear();
    cachedValues(cache, 20, 1, 31, 2);
    cachedValues(cache, 14, 1, 8, 1);
    cachedValues(cache, 22, 1, 1, 2);
    EXPECT_EQ(cacheText(cache), "01080008=0000 01080009=0000 01130001=0000 01130002=0000") << "asked for, so created";
}

TEST(HostValues, WrittenRecordsHoldExactlyWhatTheirCountNeeds) {
    const char kCases[] = R"(
        values                  | given                       | record
        bits by any nonzero     | 1@5+10=ff80000000000000000101 | 1@5+10=0302
        bits, values short      | 2@5+9=01                    | 2@5+9=0100
        fewer bits than none    | 1@5+-2=01                   | 1@5+-2
        words, values long      | 7@5+1=34127856              | 7@5+1=3412
        pairs, odd count        | 12@5+3=785634120100000099   | 12@5+2=7856341201000000
        fewest double words     | 13@5+-2147483648=01         | 13@5+-1073741823
        bits in words           | 15@5+3=0200                 | 15@5+3=010000)";
    expectColumn(kCases, "record", [](const TableRow &row) {
        const RW_VAR given = record(row["given"]);
        RW_VAR written = given;
        setWrittenValues(written, given.data, given.count);
        return listText({written});
    });
}

}  // namespace
