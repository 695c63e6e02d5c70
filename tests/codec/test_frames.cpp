#include "codec/Func_Check.h"
#include "codec/reply_check.h"
#include "codec/Func_Read.h"
#include "codec/Func_Write.h"
#include "support/driver_scene.h"

namespace {

using Frames = DriverScene;

// Every type, with the data bytes of its reply.
const char kReads[] = R"(
    0@0+10 > 010104b0000a > 2    ; 1@10+1 > 0101000a0001 > 1  ; 2@2047+8 > 01010fcf0008 > 1; 2@2048+9 > 01012ee00009 > 2
    3@256+256 > 010175300100 > 32; 4@1024+17 > 010179180011 > 3; 5@256+1 > 01012af80001 > 1; 6@255+1 > 010124ef0001 > 1
    7@100+2 > 010300640002 > 4   ; 7@8000+125 > 0103c350007d > 250; 8@256+1 > 01032ee00001 > 2
    9@256+300 > 01032af8012c > 600; 10@0+1 > 0103251c0001 > 2; 11@0+1 > 010321340001 > 2; 13@256+3 > 010327100006 > 12
    19@0+1 > 010332c80001 > 2    ; 12@100+2 > 010000640002 > 0; 14@256+2 > 01002ee00002 > 0; 15@163+1 > 010000000001 > 0
    16@163+1 > 010000000001 > 0  ; 17@163+1 > 010000000001 > 0; 18@5+2 > 010021390002 > 0  ; 20@163+1 > 010000000001 > 0
    21@5+2 > 010032cd0002 > 0    ; 22@5+2 > 010000000002 > 0  ; -1@5+2 > 010000000002 > 0  ; 7@0+0 > 010300000000 > 0
    257/7@100+2:3/4 > 010300640002 > 4)";

/// Every flipped bit of the reply is refused, and so is the reply without its last byte.
void expectOnlyGoodReplyAccepted(QByteArray reply) {
    EXPECT_EQ(CheckGetData(&reply, reply.size()), reply.size() > 5 ? kReplyToStore : kReplyRejected);
    for (int bit = 0; bit < reply.size() * 8; ++bit) {
        QByteArray altered = reply;
        altered[bit / 8] = static_cast<char>(altered.at(bit / 8) ^ (1 << (bit % 8)));
        ASSERT_EQ(CheckGetData(&altered, altered.size()), kReplyRejected) << "bit " << bit;
    }
    reply.chop(1);
    EXPECT_EQ(CheckGetData(&reply, reply.size()), kReplyRejected);
}

TEST_F(Frames, ReadsAndTheirReplies) {
    for (const Row &row : rows(kReads)) {
        SCOPED_TRACE(row.text);
        const int data = row.number(2);
        expectRequest(ReadRegister, record(row[0]), withCrc(row[1]), {data + 5, 3, data});
        expectOnlyGoodReplyAccepted(goodReply());
    }
    expectRequest(ReadAnalog, record("7@100+2"), bytes("01030064000285d4"), {9, 3, 4});
}

// On, off and missing coils; data short, exact and long; no elements; both sides of the bounds; types without a frame.
const char kWrites[] = R"(
    1@10+1=01 > 0105000aff00                  ; 1@10+1=80 > 0105000aff00
    1@10+1=00 > 0105000a0000                  ; 1@10+1 > 0105000a0000
    1@0+10=cd01 > 010f0000000a02cd01          ; 1@0+10=cd > 010f0000000a02cd
    1@0+3=05aabb > 010f000000030105aabb       ; 0@0+2048 > 010f04b0080000
    2@2047+1=01 > 01050fcfff00                ; 2@2048+1=01 > 01052ee0ff00
    7@100+1=34125678 > 010600641234           ; 7@100+1=34 > 010600640034
    7@100+2=010002 > 0110006400020400010002   ; 7@100+2 > 0110006400020400000000
    7@100+0=3412 > 01100064000000             ; 7@100+-1=3412 > 01100064fffffe
    8@256+1=3412 > 01062ee01234               ; 9@255+1=3412 > 010624271234
    10@0+1=3412 > 0106251c1234                ; 11@0+1=3412 > 010621341234
    19@0+1=3412 > 010632c81234                ; 12@100+1=78563412 > 0110006400020412345678
    12@100+1=7856 > 0110006400020400005678    ; 14@256+2=7856341201000000 > 01102ee00004081234567800000001
    18@0+1=78563412 > 0110213400020412345678  ; 21@0+1=78563412 > 011032c800020412345678
    13@255+1=78563412 > 0110265200020412345678; 13@256+2=7856341201 > 011027100004081234567800000001
    13@0+-1 > 01102454fffefc                  ; 15@163+1=01 > 01000000
    20@163+1=01 > 01000000                    ; 22@5+1=01 > 01000000
    256/7@100+1=3412 > 000600641234           ; -1/7@100+1=3412 > ff0600641234)";

TEST_F(Frames, Writes) {
    for (const Row &row : rows(kWrites)) {
        SCOPED_TRACE(row.text);
        expectRequest(WriteAnalog, record(row[0]), withCrc(row[1]), {8, 0, 0});
    }
    expectRequest(WriteAnalog, record("0/7@100+1=3412"), withCrc("000600641234"), {0, 0, 0});
}

TEST_F(Frames, WrittenValuesShowInTheCacheUnlessTheLinkHasFailed) {
    RW_VAR word = record("7@100+2=341278"), bit = record("16@37+1=01");
    for (const char *shown : {"01070064=3412 01070065=7800 01080002=2000", ""}) {
        restart();
        PLC_driver.comFailed = *shown == '\0' ? 1 : 0;
        WriteRegister(&word);
        WriteRegister(&bit);
        EXPECT_EQ(cacheText(), shown);
        EXPECT_EQ(word.data, bytes("341278"));
    }
}

}  // namespace
