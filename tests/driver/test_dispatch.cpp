#include "driver/dispatch.h"

#include <climits>

#include "support/driver_scene.h"

namespace {

using Dispatch = DriverScene;

struct CodeCase {
    int ownerId;
    int rejected, noReply, wrongLength;  // own node; another node's are 100 more
};

const CodeCase kCodes[] = {{0, 11, 41, 71},  {1, 12, 42, 72},  {5, 16, 46, 76},       {11, 22, 52, 82},
                           {12, 11, 41, 71}, {-1, 11, 41, 71}, {INT_MAX, 11, 41, 71}, {INT_MIN, 11, 41, 71}};

TEST_F(Dispatch, FailureCodesByKindAndOwner) {
    for (const int remote : {0, 1}) {
        for (const CodeCase &row : kCodes) {
            const auto failed = [&](const QByteArray &reply) {
                restart();
                settings.localNode = remote;
                queueOnceRead(recordOf(row.ownerId, 3, record("7@100+1")));
                send();
                const int code = answer(reply);
                const std::string owner = std::to_string(row.ownerId);
                expectCallbacks(remote != 0 ? std::vector<std::string>{"list " + owner}
                                            : std::vector<std::string>{"failed " + owner + "/3", "list " + owner});
                EXPECT_EQ(cacheText(), "");
                return code - 100 * remote;
            };
            EXPECT_EQ(failed(QByteArray()), row.noReply) << row.ownerId;
            EXPECT_EQ(failed(withCrc("0103 02 1234").left(6)), row.wrongLength);
            EXPECT_EQ(failed(withCrc("0103 02 1234") + '\0'), row.wrongLength);
            EXPECT_EQ(failed(withCrc("0183 02")), row.wrongLength);
            EXPECT_EQ(failed(withCrc("0203 02 1234")), row.rejected);
            EXPECT_EQ(failed(bytes("0103 02 1234 0000")), row.rejected);
        }
    }
}

TEST_F(Dispatch, OutcomesAndBases) {
    static const int kOutcomes[][2] = {{0, 1},   {1, 14},  {2, 44},  {3, 74},   {4, 100},       {5, 114},
                                       {6, 144}, {7, 174}, {8, 200}, {-1, 200}, {INT_MAX, 200}, {INT_MIN, 200}};
    queueOnceRead(recordOf(3, 0, record("7@100+1")));
    send();
    for (const auto &row : kOutcomes) {
        EXPECT_EQ(GetDriverReturnValue(row[0]), row[1]) << "outcome " << row[0];
    }
    EXPECT_EQ(SwitchErrorReturn(10), 14);
    EXPECT_EQ(SwitchErrorReturn(170), 174);
}

struct LengthCase {
    const char *name;
    int station, replyLength;
    QByteArray reply;
    int code;
};

TEST_F(Dispatch, ExpectedLengths) {
    const LengthCase cases[] = {{"any length", 1, -1, withCrc("0103 04 12345678"), 1},
                                {"any length, rejected", 1, -1, bytes("0103 02 1234 0000"), 11},
                                {"any length, too short", 1, -1, withCrc("0183 02"), 11},
                                {"any length, but nothing came", 1, -1, QByteArray(), 41},
                                {"none expected, none came: the check decides", 1, 0, QByteArray(), 11},
                                {"none expected, one came", 1, 0, withCrc("0103 02 1234"), 71},
                                {"broadcast", 0, 0, QByteArray(), 1},
                                {"broadcast answered", 0, 0, withCrc("0003 02 1234"), 71}};
    for (const LengthCase &row : cases) {
        restart();
        queueOnceRead(recordAt(row.station, record("7@100+1")));
        send();
        PLC_driver.protocolList[0].replyLength = row.replyLength;
        EXPECT_EQ(answer(row.reply), row.code) << row.name;
    }
}

TEST_F(Dispatch, LengthArgumentIsTheLength) {
    queueOnceRead(record("7@100+1"));
    send();
    QByteArray reply = withCrc("0103 02 1234");
    EXPECT_EQ(DataCom(&reply, 6)->retValue, 71);
    queueOnceRead(record("7@100+1"));
    send();
    QByteArray shorter = reply.left(4);
    EXPECT_EQ(DataCom(&shorter, 7)->retValue, 11);
    EXPECT_EQ(cacheText(), "");
}

TEST_F(Dispatch, RetriesThenFailure) {
    settings.retryTimes = 2;
    queueOnceRead(recordOf(5, 6, record("7@100+1")));
    const QByteArray frame = send();
    for (int bad = 1; bad <= 2; ++bad) {
        EXPECT_EQ(noReply(), 0);
        EXPECT_EQ(settings.retryCount, bad);
        EXPECT_EQ(send(), frame);
        EXPECT_EQ(PLC_driver.comFailed, 0);
    }
    expectCallbacks({});
    EXPECT_EQ(noReply(), 46);
    expectCallbacks({"failed 5/6", "list 5"});
    EXPECT_EQ(settings.retryCount, 0);
    EXPECT_EQ(PLC_driver.comFailed, 1);
    EXPECT_TRUE(PLC_driver.protocolList.isEmpty());
    EXPECT_TRUE(PLC_driver.onceReadVarList.isEmpty());
    queueOnceRead(record("7@100+1"));
    EXPECT_EQ(exchange(), 1);
    EXPECT_EQ(PLC_driver.comFailed, 0);
}

TEST_F(Dispatch, RetryCountSurvivesGoodReplies) {
    settings.retryTimes = 2;
    addCyclic(record("7@100+1"));
    send();
    EXPECT_EQ(noReply(), 0);
    EXPECT_EQ(noReply(), 0);
    EXPECT_EQ(answer(goodReply()), 1);
    EXPECT_EQ(settings.retryCount, 2);
    EXPECT_EQ(exchange(), 1);
    send();
    EXPECT_EQ(answer("0203 02 1234"), 11);
    EXPECT_EQ(settings.retryCount, 0);
    settings.retryTimes = -1;
    send();
    EXPECT_EQ(noReply(), 41);
}

TEST_F(Dispatch, RemoteReplyIsNotStored) {
    RW_VAR read = record("7@100+1");
    read.nodeId = 2;
    queueOnceRead(read);
    send();
    EXPECT_EQ(answer("0103 02 1234"), 100);
    expectCallbacks({});
    EXPECT_EQ(cacheText(), "");
    EXPECT_EQ(PLC_driver.retVar.nodeId, 2);
    EXPECT_TRUE(PLC_driver.onceReadVarList.isEmpty());
    settings.remoteMode = 1;  // a remote frame for the own node: its reply is a local one
    queueOnceRead(record("7@100+1"));
    send();
    EXPECT_EQ(answer("0103 02 1234"), 1);
    EXPECT_EQ(cacheText(), "01070064=3412");
}

TEST_F(Dispatch, OwnOrOtherNodeIsDecidedWhenTheReplyArrives) {
    queueOnceRead(recordOf(1, 2, record("7@100+1")));
    send();
    settings.localNode = 9;
    EXPECT_EQ(answer("0103 02 1234"), 100);
    expectCallbacks({});
    queueOnceRead(recordOf(1, 2, record("7@100+1")));
    send();
    settings.localNode = 0;
    EXPECT_EQ(answer("0103 02 1234"), 1);
    expectCallbacks({"done 1/2"});
}

TEST_F(Dispatch, PassIsDoneWithOneOperationMoreThanEntries) {
    addCyclic(record("7@1+1"));
    addCyclic(record("7@2+1"));
    queueWrite(record("7@3+1=0100"));  // counts as well
    RW_VAR remote = record("7@4+1");
    remote.nodeId = 2;
    queueOnceRead(remote);  // does not
    static const int kDone[][2] = {{0, 1}, {0, 1}, {0, 2}, {1, 0}, {1, 0}};
    for (const auto &row : kDone) {
        exchange();
        EXPECT_EQ(settings.cycleDone, row[0]);
        EXPECT_EQ(PLC_driver.readCycleCount, row[1]);
    }
    PLC_driver.readCycleCount = 2;
    send();
    EXPECT_EQ(noReply(), 41);
    EXPECT_EQ(settings.cycleDone, 0);
    EXPECT_EQ(PLC_driver.readCycleCount, 0);
}

TEST_F(Dispatch, ResultRecordCopiesEverythingButTheData) {
    RW_VAR from = record("7@100+2=3412"), to = record("1@1+1=ff");
    from.label = QString::fromLatin1("label");
    const std::vector<int RW_VAR::*> fields = {&RW_VAR::ownerId,    &RW_VAR::itemId,  &RW_VAR::accessFlag,
                                               &RW_VAR::remoteMode, &RW_VAR::nodeId,  &RW_VAR::retValue,
                                               &RW_VAR::elemType,   &RW_VAR::address, &RW_VAR::station,
                                               &RW_VAR::count,      &RW_VAR::param1,  &RW_VAR::param2};
    int value = 100;
    for (int RW_VAR::*field : fields) {
        from.*field = ++value;
    }
    passRetValue(from, to);
    for (int RW_VAR::*field : fields) {
        EXPECT_EQ(to.*field, from.*field);
    }
    EXPECT_EQ(to.label, from.label);
    EXPECT_EQ(to.addressText, from.addressText);
    EXPECT_TRUE(to.data.isEmpty());
}

}  // namespace
