// The frames of reads and writes, the replies that they accept, and the result codes.
#include "codec/bit_write.h"
#include "codec/protocol.h"
#include "codec/read_request.h"
#include "codec/reply_check.h"
#include "codec/reply_outcome.h"
#include "codec/write_request.h"
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
    const Protocol longest = readRequest(record("13@0+2147483647"));
    EXPECT_EQ(longest.dataLength, 2147483647) << "not wrapped to a valid length";
    EXPECT_EQ(longest.replyLength, 2147483647);
}

TEST(WriteRequest, FramesOfEveryClass) {
    for (const TableRow &row : table(cases("codec/write_request", "writes"))) {
        SCOPED_TRACE(row.line());
        const RW_VAR var = record(row["variable"]);
        expectRequest(writeRequest(var), var, withCrc(row["frame without CRC"]), var.station == 0 ? 0 : 8, 0, 0);
    }
    EXPECT_EQ(writeRequest(record("13@0+2147483647")).frame.size(), 9 + 4 * kMaxElementCount);
}

TEST(BitWrite, ReadsAndWritesTheWholeWord) {
    const BitWrite halves = bitWrite(record("16@37+9=01:3/4^5"));
    expectRequest(halves.read, record("8@2+1=0000:3/4^5"), withCrc("0103 1f42 0001"), 7, 3, 2);
    expectRequest(halves.write, record("8@2+1=0000:3/4^5"), withCrc("0106 1f42 0000"), 8, 0, 0);
    EXPECT_EQ(otherFields(halves.read.var), ", 37: 4 0 0 0 -1 0");
    EXPECT_EQ(otherFields(halves.write.var), ", 37: 4 1 0 0 0 0");
    EXPECT_EQ(bitWrite(record("15@-17+1")).read.var.address, -1);
}

// Frames cut short, and all frames by a reply too short, stay as they are.

TEST(BitWrite, CompletedInEitherFormOfWrite) {
    for (const TableRow &row : table(cases("codec/bit_write", "completions"))) {
        const QByteArray reply = withCrc(bytes("0103 02") + bytes(row["read"]));
        for (const QByteArray &form : {bytes("0106 0002"), bytes("0110 0002 0001 02")}) {
            const QByteArray pending = withCrc(form + bytes("0000")), written = withCrc(form + bytes(row["written"]));
            for (int size = 0; size <= pending.size(); ++size) {
                QByteArray frame = pending.left(size);
                completeBitWrite(frame, reply, row.number("address"), row.number("on") == 1);
                EXPECT_EQ(frame, size < pending.size() ? pending.left(size) : written) << row.line();
            }
        }
    }
}

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
        for (const int repliesBefore : {0, 1, 2}) {
            EXPECT_EQ(resultCode(remoteOutcome(request, came, check, repliesBefore), 3),
                      row.number(repliesBefore == 1 ? "other" : "read half"));
        }
    }
    const int owners[][2] = {{0, 171}, {1, 172}, {11, 182}, {12, 171}, {-1, 171}, {INT_MAX, 171}, {INT_MIN, 171}};
    for (const auto &[ownerId, code] : owners) {
        EXPECT_EQ(failureCode(170, ownerId), code) << ownerId;
    }
    for (const int noOutcome : {8, -1, INT_MAX, INT_MIN}) {
        EXPECT_EQ(resultCode(noOutcome, 0), 200) << noOutcome;
    }
}

}  // namespace
