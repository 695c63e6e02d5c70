#include "codec/reply_check.h"

#include "support/record_text.h"

namespace {

// 0: rejected, 1: to store, 2: complete.

TEST(ReplyCheck, StationAndCrc) {
    for (const TableRow &row : table(cases("codec/reply_check", "replies"))) {
        Protocol request = Protocol();
        request.frame = bytes(row["request"]);
        request.var.accessFlag = row.number("access");
        EXPECT_EQ(checkReply(request, row.number("remote") != 0, bytes(row["bytes"])), row.number("result"))
            << row.line();
    }
}

}  // namespace
