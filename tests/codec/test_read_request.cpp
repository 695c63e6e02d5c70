#include "codec/read_request.h"

#include "codec/reply_check.h"
#include "support/record_text.h"

namespace {

const char kReads[] = R"(
    read                       | variable        | frame without CRC | data
    coils, whole bytes         | 2@2047+8        | 0101 0fcf 0008    | 1
    coils, one more            | 2@2048+9        | 0101 2ee0 0009    | 2
    coils, high byte of count  | 3@256+256       | 0101 7530 0100    | 32
    registers                  | 7@100+2:3/4     | 0103 0064 0002    | 4
    registers, largest request | 7@8000+125      | 0103 c350 007d    | 250
    double words               | 13@256+3        | 0103 2710 0006    | 12
    none                       | 7@0+0           | 0103 0000 0000    | 0
    station above 255          | 257/7@100+2     | 0103 0064 0002    | 4
    station above 127          | 200/7@100+2     | c803 0064 0002    | 4
    pairs, not normalised      | 12@100+2        | 0100 0064 0002    | 0
    bits, not normalised       | 20@163+1        | 0100 0000 0001    | 0
    unknown type above         | 22@5+2          | 0100 0000 0002    | 0)";

TEST(ReadRequest, FramesAndTheOneReplyThatEachAccepts) {
    for (const TableRow &row : table(kReads)) {
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
