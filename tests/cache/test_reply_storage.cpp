#include "cache/reply_storage.h"

#include "support/record_text.h"

namespace {

const char kReplies[] = R"(
    reply                             | request        | length | data             | entries
    words                             | 7@100+2        | 4      | 12345678         | 01070064=3412 01070065=7856
    words by the data, not the count  | 19@0+9         | 4      | 12345678         | 01130000=3412 01130001=7856
    more data than the request's      | 11@5+1         | 2      | 12345678         | 010b0005=3412
    data end inside a word            | 9@5+2          | 3      | 123456           | 01090005=3412 01090006=0056
    double words                      | 13@5+2         | 8      | 0001000200030004 | 010d0005=02000100 010d0006=04000300
    data end inside a double word     | 13@5+2         | 8      | 000100020003     | 010d0005=02000100
    bits                              | 1@7+3          | 1      | fd               | 01010007=01 01010008=00 01010009=01
    bits, data end sooner             | 6@0+9          | 1      | ff01             | 01060000=01 01060001=01 01060002=01 01060003=01 01060004=01 01060005=01 01060006=01 01060007=01
    bits, no data                     | 0@0+20         | 3      |                  |
    bits, fewer than none             | 0@0+-1         | 1      | ff               |
    bits inside a word                | 20@10+1        | 2      | 1234             |
    unknown type above                | 22@10+1        | 2      | 1234             |
    unknown type below                | -1@10+1        | 2      | 1234             |)";

TEST(ReplyStorage, OneEntryForEachElementThatIsThere) {
    for (const TableRow &row : table(kReplies)) {
        Protocol request = Protocol();
        request.var = record(row["request"]);
        request.dataOffset = 3;
        request.dataLength = row.number("length");
        ValueCache cache;
        storeReply(cache, request, bytes("01"));
        EXPECT_EQ(cacheText(cache), "") << "shorter than the offset: " << row.line();
        storeReply(cache, request, bytes("010302") + bytes(row["data"]));
        EXPECT_EQ(cacheText(cache), row["entries"]) << row.line();
    }
}

}  // namespace
