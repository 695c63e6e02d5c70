#include "codec/write_request.h"

#include "support/record_text.h"

namespace {

const char kWrites[] = R"(
    write                             | variable                     | frame without CRC
    coil on                           | 1@10+1=01                    | 0105 000a ff00
    coil on by any bit                | 1@10+1=80                    | 0105 000a ff00
    coil off                          | 1@10+1=00                    | 0105 000a 0000
    coil without data                 | 1@10+1                       | 0105 000a 0000
    coils                             | 1@0+10=cd01                  | 010f 0000 000a 02 cd01
    coils, data short: as they stand  | 1@0+10=cd                    | 010f 0000 000a 02 cd
    coils, byte count wraps           | 0@0+2048                     | 010f 04b0 0800 00
    register                          | 7@100+1=34125678             | 0106 0064 1234
    register, data short              | 7@100+1=34                   | 0106 0064 0034
    registers                         | 7@100+2=01000200             | 0110 0064 0002 04 0001 0002
    registers, data short             | 7@100+2=010002               | 0110 0064 0002 04 0001 0002
    count below 0                     | 7@100+-1=3412                | 0110 0064 ffff fe
    one pair, high half first         | 12@100+1=78563412            | 0110 0064 0002 04 1234 5678
    pair, data short                  | 12@100+1=7856                | 0110 0064 0002 04 0000 5678
    pairs                             | 14@256+2=7856341201          | 0110 2ee0 0004 08 1234 5678 0000 0001
    double word                       | 13@255+1=78563412            | 0110 2652 0002 04 1234 5678
    double words, upper segment       | 13@256+2=7856341201          | 0110 2710 0004 08 1234 5678 0000 0001
    double words, count below 0       | 13@0+-1                      | 0110 2454 fffe fc
    bit in a word has no form here    | 15@163+1=01                  | 0100 0000
    unknown type                      | 22@5+1=01                    | 0100 0000
    station below 0                   | -1/7@100+1=3412              | ff06 0064 1234
    broadcast                         | 0/7@100+1=3412               | 0006 0064 1234)";

TEST(WriteRequest, FramesOfEveryClass) {
    for (const TableRow &row : table(kWrites)) {
        SCOPED_TRACE(row.line());
        const RW_VAR var = record(row["variable"]);
        expectRequest(writeRequest(var), var, withCrc(row["frame without CRC"]), var.station == 0 ? 0 : 8, 0, 0);
    }
    EXPECT_EQ(writeRequest(record("7@100+1=3412")).frame, bytes("010600641234c562"));
}

TEST(WriteRequest, ValuesEndAtTheLargestCount) {
    EXPECT_EQ(writeRequest(record("7@0+2147483647")).frame.size(), 9 + 2 * kMaxElementCount);
    EXPECT_EQ(writeRequest(record("13@0+1048577")).frame.size(), 9 + 4 * kMaxElementCount);
}

}  // namespace
