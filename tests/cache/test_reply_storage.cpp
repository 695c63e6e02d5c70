#include "cache/reply_storage.h"

#include "support/record_text.h"

namespace {

TEST(ReplyStorage, OneEntryForEachElementThatIsThere) {
    for (const TableRow &row : table(cases("cache/reply_storage", "replies"))) {
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
