#include "codec/read_request.h"

#include "codec/reply_check.h"
#include "support/record_text.h"

namespace {

TEST(ReadRequest, FramesAndTheOneReplyThatEachAccepts) {
    for (const TableRow &row : table(cases("codec/read_request", "reads"))) {
        SCOPED_TRACE(row.line());
        const int data = row.number("data");
        const RW_VAR var = record(row["variable"]);
        const Protocol request = readRequest(var);
        expectRequest(request, var, withCrc(row["frame without CRC"]), data + 5, 3, data);

        const QByteArray reply = withCrc(request.frame.left(2) + char(data) + QByteArray(data, '\x5a'));
        EXPECT_EQ(checkReply(request, false, reply), data > 0 ? kReplyToStore : kReplyRejected);
        EXPECT_EQ(checkReply(request, false, reply.left(reply.size() - 1)), kReplyRejected);
        for (int bit = 0; bit < reply.size() * 8; ++bit) {
            QByteArray altered = reply;
            altered[bit / 8] = static_cast<char>(altered.at(bit / 8) ^ (1 << (bit % 8)));
            ASSERT_EQ(checkReply(request, false, altered), kReplyRejected) << "bit " << bit;
        }
    }
    EXPECT_EQ(readRequest(record("7@100+2")).frame, bytes("01030064000285d4"));
    EXPECT_EQ(readRequest(record("13@0+2147483647")).dataLength, 2147483647) << "not wrapped to a valid length";
}

}  // namespace
