#include "codec/bit_write.h"

#include "codec/protocol.h"
#include "support/record_text.h"

namespace {

TEST(BitWrite, ReadsAndWritesTheWholeWord) {
    const RW_VAR var = record("16@37+9=01:3/4^5");
    const BitWrite halves = bitWrite(var);
    expectRequest(halves.read, record("8@2+1=0000:3/4^5"), withCrc("0103 1f42 0001"), 7, 3, 2);
    expectRequest(halves.write, record("8@2+1=0000:3/4^5"), withCrc("0106 1f42 0000"), 8, 0, 0);
    EXPECT_TRUE(isMergeRead(halves.read));
    EXPECT_FALSE(isMergeRead(halves.write));
    EXPECT_EQ(halves.read.var.accessFlag, 0);
    EXPECT_EQ(halves.write.var.accessFlag, 1);
    for (int type = -1; type < 23; ++type) {
        EXPECT_EQ(isBitWrite(record(std::to_string(type) + "@1+1")),
                  type == 15 || type == 16 || type == 17 || type == 20);
    }
}

TEST(BitWrite, CompletedInEitherFormOfWrite) {
    for (const TableRow &row : table(cases("codec/bit_write", "completions"))) {
        const QByteArray reply = withCrc(bytes("0103 02") + bytes(row["read"]));
        for (const QByteArray &form : {bytes("0106 0002"), bytes("0110 0002 0001 02")}) {
            QByteArray frame = withCrc(form + bytes("0000"));
            completeBitWrite(frame, reply, row.number("address"), row.number("on") == 1);
            EXPECT_EQ(frame, withCrc(form + bytes(row["written"]))) << row.line();
        }
    }
}

TEST(BitWrite, NothingToComplete) {
    const QByteArray reply = withCrc("0103 02 ffff");
    for (const char *frame : {"", "01", "0106 0002 0000 00", "0110 0002 0001 02 0000 00"}) {
        QByteArray tooShort = bytes(frame);
        completeBitWrite(tooShort, reply, 35, true);
        EXPECT_EQ(tooShort, bytes(frame));
    }
    QByteArray pending = bytes("0106 0002 0000 1234");
    completeBitWrite(pending, reply.left(5), 35, true);
    EXPECT_EQ(pending, bytes("0106 0002 0000 1234"));
}

}  // namespace
