#include "codec/reply_outcome.h"

#include "codec/protocol.h"
#include "support/record_text.h"

namespace {

// Result codes for owner 3: of the own node, of another node, and of the read half of a bit write of another node.

TEST(ReplyOutcome, LengthThenCheck) {
    for (const TableRow &row : table(cases("codec/reply_outcome", "replies"))) {
        SCOPED_TRACE(row.line());
        Protocol request = Protocol();
        request.replyLength = row.number("expected");
        const int came = row.number("came"), check = row.number("check");
        EXPECT_EQ(resultCode(localOutcome(request, came, check), 3), row.number("own"));
        EXPECT_EQ(resultCode(remoteOutcome(request, came, check, 0), 3), row.number("other"));
        request.var.param1 = kMergeRead;
        EXPECT_EQ(resultCode(remoteOutcome(request, came, check, 0), 3), row.number("read half"));
        EXPECT_EQ(resultCode(remoteOutcome(request, came, check, 1), 3), row.number("other")) << "as the second reply";
        EXPECT_EQ(resultCode(remoteOutcome(request, came, check, 2), 3), row.number("read half"));
    }
}

TEST(ReplyOutcome, OwnersZeroToElevenHaveCodesOfTheirOwn) {
    const int owners[][2] = {{0, 171}, {1, 172}, {11, 182}, {12, 171}, {-1, 171}, {INT_MAX, 171}, {INT_MIN, 171}};
    for (const auto &[ownerId, code] : owners) {
        EXPECT_EQ(failureCode(170, ownerId), code) << ownerId;
    }
    for (const int noOutcome : {8, -1, INT_MAX, INT_MIN}) {
        EXPECT_EQ(resultCode(noOutcome, 0), 200) << noOutcome;
    }
}

}  // namespace
