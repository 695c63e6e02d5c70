#include "codec/reply_check.h"

#include "support/record_text.h"

namespace {

// 0: rejected, 1: to store, 2: complete.
const char kReplies[] = R"(
    reply                              | request    | remote | access | bytes            | result
    to a read                          | 01030064   |      0 |      0 | 0103021234b533   | 1
    to a write, any flag but 0         | 01030064   |      0 |     -1 | 0103021234b533   | 2
    function code is not looked at     | 01030064   |      0 |      0 | 0155aa1234255b   | 1
    six bytes are enough               | 01030064   |      0 |      0 | 01030000f1d8     | 1
    five bytes are not                 | 01030064   |      0 |      0 | 018302c0f1       | 0
    none                               | 01030064   |      0 |      0 |                  | 0
    CRC high byte first                | 01030064   |      0 |      0 | 010302123433b5   | 0
    station above 127                  | c8030064   |      0 |      0 | c8030212346923   | 1
    broadcast, noise                   | 00060064   |      0 |      0 | ff               | 2
    remote mode: byte 4 is the station | 16050002aa |      1 |      0 | aa0302123490eb   | 1
    remote mode: byte 0 is not         | 01050002aa |      1 |      0 | 0103021234b533   | 0
    remote mode, broadcast             | 1605000200 |      1 |      0 | ff               | 2)";

TEST(ReplyCheck, StationAndCrc) {
    for (const TableRow &row : table(kReplies)) {
        Protocol request = Protocol();
        request.frame = bytes(row["request"]);
        request.var.accessFlag = row.number("access");
        EXPECT_EQ(checkReply(request, row.number("remote") != 0, bytes(row["bytes"])), row.number("result"))
            << row.line();
    }
}

}  // namespace
