#include "cache/written_values.h"

#include "support/record_text.h"

namespace {

// Data are padded, never shortened.
const char kWrites[] = R"(
    write                         | given                   | entries                     | data afterwards
    bits across a bound           | 2@2047+9=0d01           | 010207ff=01 01020800=00 01020801=01 01020802=01 01020803=00 01020804=00 01020805=00 01020806=00 01020807=01 | 0d01
    bits without data             | 1@0+2                   | 01010000=00 01010001=00     | 00
    bits, data long               | 1@0+1=ffff              | 01010000=01                 | ffff
    words                         | 7@100+2=34127856        | 01070064=3412 01070065=7856 | 34127856
    words, data short             | 19@100+2=341278         | 01130064=3412 01130065=7800 | 34127800
    words beyond the last address | 7@2147483647+2=34127856 | 01070000=7856 0107ffff=3412 | 34127856
    pair on 7                     | 12@10+1=78563412        | 0107000a=3412 0107000b=7856 | 78563412
    pairs on 19                   | 21@0+2=7856341201       | 01130000=3412 01130001=7856 01130002=0000 01130003=0100 | 7856341201000000
    double words                  | 13@10+2=7856341201      | 010d000a=78563412 010d000b=01000000 | 7856341201000000
    bit in the low byte           | 15@163+1=01             | 0107000a=0800               | 01
    bit in the high byte          | 16@172+1=ff             | 0108000a=0010               | ff
    bits of two words, data short | 20@31+2=01              | 01130001=0080 01130002=0000 | 0100
    the other bits stay           | 7@10+1=ffff 15@172+1=00 | 0107000a=ffef               | 00
    bit of a negative remainder   | 15@-1+1=01              |                             | 01
    first bit of a negative word  | 15@-16+1=01             | 0107ffff=0100               | 01
    fewer than none               | 13@100+-1=3412          |                             | 3412
    unknown type                  | 22@100+1=3412           |                             | 3412
    too many elements             | 7@1+1048577             |                             |)";

TEST(WrittenValues, StoredAsRepliesAre) {
    for (const TableRow &row : table(kWrites)) {
        ValueCache cache;
        QList<RW_VAR> list = records(row["given"]);
        for (RW_VAR &var : list) {
            storeWritten(cache, var);
        }
        EXPECT_EQ(cacheText(cache), row["entries"]) << row.line();
        EXPECT_EQ(list.last().data, bytes(row["data afterwards"])) << row.line();
    }
    ValueCache cache;
    RW_VAR most = record("1@0+1048576=01");
    storeWritten(cache, most);
    EXPECT_EQ(cache.size(), 65536);
}

}  // namespace
