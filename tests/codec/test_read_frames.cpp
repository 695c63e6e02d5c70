#include "codec/Func_Check.h"
#include "codec/Func_Read.h"
#include "support/driver_scene.h"

#include <climits>

namespace {

using ReadFrames = DriverScene;

const char kFrames[] = R"(
    0@0+10 > 010104b0000a > 2   ; 1@10+1 > 0101000a0001 > 1     ; 2@2047+8 > 01010fcf0008 > 1
    2@2048+9 > 01012ee00009 > 2 ; 3@255+1 > 0101122f0001 > 1    ; 3@256+256 > 010175300100 > 32
    4@1023+1 > 01011b6f0001 > 1 ; 4@1024+17 > 010179180011 > 3  ; 5@255+1 > 0101203f0001 > 1
    5@256+1 > 01012af80001 > 1  ; 6@255+1 > 010124ef0001 > 1    ; 6@256+1 > 010127100001 > 1
    7@100+2 > 010300640002 > 4  ; 7@7999+1 > 01031f3f0001 > 2   ; 7@8000+125 > 0103c350007d > 250
    7@23536+1 > 010300000001 > 2; 8@255+1 > 0103203f0001 > 2    ; 8@256+1 > 01032ee00001 > 2
    9@255+1 > 010324270001 > 2  ; 9@256+300 > 01032af8012c > 600; 10@0+1 > 0103251c0001 > 2
    11@0+1 > 010321340001 > 2   ; 13@0+1 > 010324540002 > 4     ; 13@255+1 > 010326520002 > 4
    13@256+3 > 010327100006 > 12; 19@0+1 > 010332c80001 > 2     ; 12@100+2 > 010000640002 > 0
    14@256+2 > 01002ee00002 > 0 ; 15@163+1 > 010000000001 > 0   ; 16@163+1 > 010000000001 > 0
    17@163+1 > 010000000001 > 0 ; 18@5+2 > 010021390002 > 0     ; 20@163+1 > 010000000001 > 0
    21@5+2 > 010032cd0002 > 0   ; 22@5+2 > 010000000002 > 0     ; -1@5+2 > 010000000002 > 0
    0@0+0 > 010104b00000 > 0    ; 7@0+0 > 010300000000 > 0)";

/// Every flipped bit of the reply is refused, and so is the reply without its last byte.
void expectOnlyGoodReplyAccepted(const QByteArray &reply) {
    for (int i = 0; i < reply.size(); ++i) {
        for (int bit = 0; bit < 8; ++bit) {
            QByteArray altered = reply;
            altered[i] = static_cast<char>(altered.at(i) ^ (1 << bit));
            ASSERT_EQ(CheckGetData(&altered, altered.size()), 0) << "byte " << i << " bit " << bit;
        }
    }
    QByteArray shorter = reply.left(reply.size() - 1);
    EXPECT_EQ(CheckGetData(&shorter, shorter.size()), 0);
}

TEST_F(ReadFrames, OfEveryTypeAndTheirReplies) {
    for (const Row &row : rows(kFrames)) {
        SCOPED_TRACE(row.text);
        const int dataLength = row.number(2);
        restart();
        settings.frameTotal = settings.frameDone = 7;
        RW_VAR var = recordOf(5, 6, record(row[0]));
        ReadRegister(&var);
        ASSERT_EQ(PLC_driver.protocolList.size(), 1);
        const Protocol &request = PLC_driver.protocolList.at(0);
        EXPECT_EQ(request.frame, withCrc(row[1]));
        EXPECT_EQ(request.frameLength, 8);
        EXPECT_EQ(request.dataOffset, 3);
        EXPECT_EQ(request.dataLength, dataLength);
        EXPECT_EQ(request.replyLength, dataLength + 5);
        EXPECT_EQ(request.var.ownerId, 5);
        EXPECT_EQ(listText({request.var}), listText({var}));
        EXPECT_EQ(settings.frameTotal, 1);
        EXPECT_EQ(settings.frameDone, 0);
        QByteArray reply = goodReply();
        EXPECT_EQ(CheckGetData(&reply, reply.size()), dataLength > 0 ? 1 : 0);
        expectOnlyGoodReplyAccepted(reply);
    }
}

TEST_F(ReadFrames, KnownFramesWithTheirCrc) {
    for (const Row &row : rows("7@100+2 > 01030064000285d4; 0@0+10 > 010104b0000abcda; 13@0+1 > 0103245400028f2b")) {
        restart();
        RW_VAR var = record(row[0]);
        ReadAnalog(&var);
        EXPECT_EQ(PLC_driver.protocolList.at(0).frame, bytes(row[1]));
    }
}

struct CheckCase {
    const char *name;
    int station, accessFlag, remoteMode;
    QByteArray reply;
    int outcome;
};

TEST_F(ReadFrames, ReplyCheck) {
    const CheckCase cases[] = {{"good read", 1, 0, 0, withCrc("0103 02 1234"), 1},
                               {"good write", 1, 1, 0, withCrc("0106 0064 1234"), 2},
                               {"any nonzero access flag is a write", 1, -1, 0, withCrc("0106 0064 1234"), 2},
                               {"six bytes are enough", 1, 0, 0, withCrc("0103 0000"), 1},
                               {"five bytes are not", 1, 0, 0, withCrc("0183 02"), 0},
                               {"empty", 1, 0, 0, QByteArray(), 0},
                               {"other station", 1, 0, 0, withCrc("0203 02 1234"), 0},
                               {"CRC high byte first", 1, 0, 0, bytes("0103 02 1234 33b5"), 0},
                               {"function code is not looked at", 1, 0, 0, withCrc("0155 aa 1234"), 1},
                               {"broadcast needs no reply", 0, 0, 0, QByteArray(), 2},
                               {"broadcast takes any reply", 0, 0, 0, bytes("ff"), 2},
                               {"only the station's low byte counts", 257, 0, 0, withCrc("0103 02 1234"), 1},
                               {"station 256 is a broadcast on the wire", 256, 0, 0, QByteArray(), 2},
                               {"station above 127", 200, 0, 0, withCrc("c803 02 1234"), 1},
                               {"remote mode looks at byte 4 of the request", 1, 0, 1, withCrc("6403 02 1234"), 0},
                               {"remote mode, station of byte 4", 1, 0, 1, withCrc("aa03 02 1234"), 1}};
    for (const CheckCase &row : cases) {
        restart();
        RW_VAR var = recordAt(row.station, record("7@100+1"));
        var.accessFlag = row.accessFlag;
        ReadAnalog(&var);
        PLC_driver.protocolList[0].frame[4] = '\xAA';
        settings.remoteMode = row.remoteMode;
        QByteArray reply = row.reply;
        EXPECT_EQ(CheckGetData(&reply, -1), row.outcome) << row.name;
        EXPECT_EQ(reply, row.reply) << row.name;
    }
}

}  // namespace
