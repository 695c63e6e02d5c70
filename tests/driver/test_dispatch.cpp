#include "driver/reply_judging.h"
#include "driver/finished_operation.h"

#include "support/driver_scene.h"

namespace {

using Dispatch = DriverScene;

TEST_F(Dispatch, FailureCodesByKindAndOwner) {
    const std::pair<QByteArray, int> replies[] = {{QByteArray(), 41},
                                                  {withCrc("0103 02 1234").left(6), 71},
                                                  {withCrc("0103 02 1234") + '\0', 71},
                                                  {withCrc("0203 02 1234"), 11},
                                                  {bytes("0103 02 1234 0000"), 11}};
    // ownerId, what it adds to the code
    for (const Row &row : rows("0 > 0; 1 > 1; 11 > 11; 12 > 0; -1 > 0; 2147483647 > 0; -2147483648 > 0")) {
        for (const int otherNode : {0, 1}) {
            for (const auto &[reply, code] : replies) {
                restart();
                settings.localNode = otherNode;
                queueOnceRead("7@100+1");
                PLC_driver.onceReadVarList[0].ownerId = row.number(0);
                send();
                EXPECT_EQ(answer(reply), code + row.number(1) + 100 * otherNode) << row.text;
            }
        }
    }
}

TEST_F(Dispatch, OutcomesAndBases) {
    queueOnceRead("7@100+1:3/0");
    send();
    for (const Row &row : rows("0 > 1; 1 > 14; 2 > 44; 3 > 74; 4 > 100; 5 > 114; 6 > 144; 7 > 174; 8 > 200; -1 > 200;"
                               "2147483647 > 200; -2147483648 > 200")) {
        EXPECT_EQ(GetDriverReturnValue(row.number(0)), row.number(1)) << row.text;
    }
}

// Name, station, expected length, remote mode, access flag, reply, code, cache.
const char kReplies[] = R"(
    read > 1 > 7 > 0 > 0 > 0103021234b533 > 1 > 01070064=3412
    any nonzero access flag is a write > 1 > 7 > 0 > -1 > 0103021234b533 > 1 >
    function code is not looked at > 1 > 7 > 0 > 0 > 0155aa1234255b > 1 > 01070064=3412
    CRC high byte first > 1 > 7 > 0 > 0 > 010302123433b5 > 11 >
    any length > 1 > -1 > 0 > 0 > 010304123456788107 > 1 > 01070064=3412
    any length, six bytes are enough > 1 > -1 > 0 > 1 > 01030000f1d8 > 1 >
    any length, five bytes are not > 1 > -1 > 0 > 0 > 018302c0f1 > 11 >
    any length, but nothing came > 1 > -1 > 0 > 0 >  > 41 >
    none expected, none came: the check decides > 1 > 0 > 0 > 0 >  > 11 >
    none expected, one came > 1 > 0 > 0 > 0 > 0103021234b533 > 71 >
    broadcast > 0 > 0 > 0 > 0 >  > 1 >
    broadcast answered > 0 > 0 > 0 > 0 > 000302123488f3 > 71 >
    station 256 is a broadcast on the wire > 256 > -1 > 0 > 0 > ff > 1 >
    only the station's low byte counts > 257 > 7 > 0 > 0 > 0103021234b533 > 1 > 01070064=3412
    station above 127 > 200 > 7 > 0 > 0 > c8030212346923 > 1 > c8070064=3412
    remote mode, not byte 4 of the request > 1 > 7 > 1 > 0 > 0103021234b533 > 11 >
    remote mode, byte 4 of the request > 1 > 7 > 1 > 0 > aa0302123490eb > 1 > 01070064=3412)";

TEST_F(Dispatch, RepliesToOneRegister) {
    for (const Row &row : rows(kReplies)) {
        SCOPED_TRACE(row.text);
        restart();
        queueOnceRead(row.fields[1] + "/7@100+1");
        PLC_driver.onceReadVarList[0].accessFlag = row.number(4);
        send();
        PLC_driver.protocolList[0].replyLength = row.number(2);
        PLC_driver.protocolList[0].frame[4] = '\xAA';
        settings.remoteMode = row.number(3);
        EXPECT_EQ(answer(bytes(row[5])), row.number(6));
        EXPECT_EQ(cacheText(), row[7]);
    }
}

TEST_F(Dispatch, LengthArgumentIsTheLength) {
    QByteArray reply = withCrc("0103 02 1234"), shorter = reply.left(4);
    const std::pair<QByteArray *, int> replies[] = {{&reply, 6}, {&shorter, 7}, {nullptr, 7}};
    std::string codes;
    for (const auto &[bytes, length] : replies) {
        queueOnceRead("7@100+1");
        send();
        codes += std::to_string(DataCom(bytes, length)->retValue) + " ";
    }
    EXPECT_EQ(codes, "71 11 41 ");
}

TEST_F(Dispatch, RetriesThenFailure) {
    settings.retryTimes = 2;
    play(R"(
        cyclic 7@100+1 > 0103 0064 0001 >              > 0  >        > 0/0@0+0 > 7@100+1
                       > 0103 0064 0001 >              > 0  >        > 0/0@0+0 > 7@100+1
                       > 0103 0064 0001 > 0103 02 1234 > 1  >        > 7@100+1 > 7@100+1)");
    EXPECT_EQ(settings.retryCount, 2);  // survives good replies
    PLC_driver.readCycleCount = settings.cycleDone = 1;
    play("> 0103 0064 0001 > 0203 02 1234 > 11 > list 0 > 7@100+1 > 7@100+1");
    EXPECT_EQ(PLC_driver.comFailed, 1);
    for (const int count : {settings.retryCount, PLC_driver.readCycleCount, settings.cycleDone}) {
        EXPECT_EQ(count, 0);
    }
    play(R"(
        > 0103 0064 0001 >              > 0 > > 7@100+1 > 7@100+1
        > 0103 0064 0001 > 0103 02 1234 > 1 > > 7@100+1 > 7@100+1)");
    EXPECT_EQ(PLC_driver.comFailed, 0);
    settings.retryTimes = -1;
    play("> 0103 0064 0001 > > 41 > list 0 > 7@100+1 > 7@100+1");
}

TEST_F(Dispatch, OtherNodesAreToldApartWhenTheReplyArrives) {
    play("read 7@100+1:1/2^2 > 0103 0064 0001 > 0103 02 1234 > 100 > > 7@100+1:1/2^2 >");
    queueOnceRead("7@100+1:1/2");
    send();
    settings.localNode = 9;
    play("> 0103 0064 0001 > 0103 02 1234 > 100 > > 7@100+1:1/2 >");
    EXPECT_EQ(cacheText(), "");  // not stored
    queueOnceRead("7@100+1:1/2");
    send();
    settings.localNode = 0;
    play("> 0103 0064 0001 > 0103 02 1234 > 1 > done 1/2 > 7@100+1:1/2 >");
    EXPECT_EQ(cacheText(), "01070064=3412");
}

TEST_F(Dispatch, PassIsDoneWithOneOperationMoreThanEntries) {
    addCyclic("7@1+1 7@2+1");
    queueWrite("7@3+1=0100");  // counts as well
    queueOnceRead("7@4+1^2");  // does not
    for (const Row &row : rows("0 > 1; 0 > 1; 0 > 2; 1 > 0; 1 > 0")) {
        exchange();
        EXPECT_EQ(settings.cycleDone, row.number(0));
        EXPECT_EQ(PLC_driver.readCycleCount, row.number(1));
    }
}

TEST_F(Dispatch, ResultRecordCopiesEverythingButTheData) {
    RW_VAR from = record("2/7@100+2=3412:5/6^7"), to = record("1@1+1=ff");
    from.label = QString::fromLatin1("label");
    from.accessFlag = from.remoteMode = from.retValue = from.param1 = from.param2 = 8;
    passRetValue(from, to);
    EXPECT_EQ(listText({to}), "2/7@100+2:5/6^7");
    EXPECT_EQ(to.accessFlag & to.remoteMode & to.retValue & to.param1 & to.param2, 8);
    EXPECT_EQ(to.label + to.addressText, QString::fromLatin1("label100"));
}

}  // namespace
