// What a finished or failed request does to the lists, and which callbacks report it.
#include "support/driver_scene.h"

namespace {

class FinishedRequests : public DriverScene {
protected:
    /// Queues requests as writes or one-shot reads, and lets the head be done or fail.
    void play(const QList<RW_VAR> &queued, bool write, bool good) {
        restart();
        for (const RW_VAR &var : queued) {
            write ? queueWrite(var) : queueOnceRead(var);
        }
        EXPECT_EQ(sendKind(), write ? "W" : "O");
        const bool otherNode = queued.at(0).nodeId != settings.localNode;
        EXPECT_EQ(good ? answer(goodReply()) : noReply(), good ? (otherNode ? 100 : 1) : (otherNode ? 142 : 42));
        EXPECT_EQ(listText({PLC_driver.retVar}), "7@10+1");
    }
};

// Queued: w names the head and its namesakes (same two identifiers); i another item, o another owner.
struct FinishCase {
    const char *names, *queued;
    int nodes[3];
    const char *leftWhenDone, *leftWhenFailed, *leftStationsIgnored;
    bool silentWrite, silentRead;
};

const FinishCase kQueues[] = {
    {"w", "7@10+1", {}, "", "", "", false, false},
    {"wio", "7@10+1 9@30+1 10@40+1", {}, "9@30+1 10@40+1", "9@30+1 10@40+1", "9@30+1 10@40+1", false, false},
    {"wiw", "7@10+1 9@30+1 8@20+1", {}, "9@30+1 8@20+1", "9@30+1", "9@30+1", true, true},
    {"www", "7@10+1 8@20+1 8@20+1", {}, "8@20+1 8@20+1", "", "", true, true},
    {"ww", "7@10+1 5/8@20+1", {}, "5/8@20+1", "5/8@20+1", "", true, true},
    {"ww", "7@10+1 8@20+1", {0, 4}, "8@20+1", "", "", true, false},  // reads of other nodes are no namesakes
    {"w", "7@10+1", {4}, "", "", "", false, true},                   // nor are they reported
    {"wwi", "7@10+1 8@20+1 9@30+1", {4, 0, 0}, "8@20+1 9@30+1", "9@30+1", "9@30+1", true, true}};

TEST_F(FinishedRequests, DoneOrFailed) {
    for (const FinishCase &row : kQueues) {
        QList<RW_VAR> queued = records(row.queued);
        for (int i = 0; i < queued.size(); ++i) {
            queued[i] = recordOf(row.names[i] == 'o' ? 2 : 1, row.names[i] == 'i' ? 3 : 2, queued.at(i));
            queued[i].nodeId = row.nodes[i];
        }
        for (const bool write : {true, false}) {
            SCOPED_TRACE(std::string(row.queued) + (write ? ", writes" : ", one-shot reads"));
            const QList<RW_VAR> &queue = write ? PLC_driver.writeVarList : PLC_driver.onceReadVarList;
            using Calls = std::vector<std::string>;
            play(queued, write, true);
            expectCallbacks((write ? row.silentWrite : row.silentRead) ? Calls{} : Calls{"done 1/2"});
            EXPECT_EQ(listText(queue), row.leftWhenDone);
            const bool unreported = !write && row.nodes[0] != 0;
            const Calls failed = unreported ? Calls{"list 1"} : Calls{"failed 1/2", "list 1"};
            play(queued, write, false);
            expectCallbacks(failed);
            EXPECT_EQ(listText(queue), row.leftWhenFailed);
            settings.useVarStation = 0;
            PLC_driver.writeVarList = PLC_driver.onceReadVarList = QList<RW_VAR>();
            (write ? PLC_driver.writeVarList : PLC_driver.onceReadVarList) = queued;
            send();
            noReply();
            expectCallbacks(failed);
            EXPECT_EQ(listText(queue), row.leftStationsIgnored);
        }
    }
}

TEST_F(FinishedRequests, CyclicReadsRotateDoneOrFailedWithoutCallback) {
    addCyclic(record("7@1+1"));
    addCyclic(record("7@2+1"));
    EXPECT_EQ(exchange(), 1);
    EXPECT_EQ(listText(PLC_driver.readVarList), "7@2+1 7@1+1");
    EXPECT_EQ(PLC_driver.readVarList.last().retValue, 0);
    EXPECT_EQ(PLC_driver.retVar.address, 1);
    expectCallbacks({});
    send();
    EXPECT_EQ(noReply(), 41);
    EXPECT_EQ(listText(PLC_driver.readVarList), "7@1+1 7@2+1");
    EXPECT_EQ(PLC_driver.readVarList.last().retValue, 0);
    EXPECT_EQ(PLC_driver.retVar.address, 2);
    expectCallbacks({"list 0"});
}

TEST_F(FinishedRequests, RebuiltListIsNotMovedByAnOlderReply) {
    QList<ReadVarEntry> entries = {ReadVarEntry(), ReadVarEntry()};
    for (int i = 0; i < 2; ++i) {
        entries[i].elemType = static_cast<unsigned char>(8 + i);
        entries[i].station = 1;
        entries[i].addressText = QString::number(i);
        entries[i].count = 1;
    }
    addCyclic(record("7@1+1"));
    send();
    ReCreatReadVarList(&entries);
    EXPECT_EQ(answer("0103 02 1234"), 1);
    EXPECT_EQ(listText(PLC_driver.readVarList), "8@0+1 9@1+1");
    EXPECT_EQ(cacheText(), "01070001=3412");
}

TEST_F(FinishedRequests, FailureWithoutAnEntryReportsTheResultRecordAsItStands) {
    queueWrite(recordOf(7, 8, record("7@10+1")));
    exchange();
    expectCallbacks({"done 7/8"});
    addCyclic(record("7@1+1"));
    send();
    QList<ReadVarEntry> entries;
    ReCreatReadVarList(&entries);
    EXPECT_EQ(noReply(), 41);
    expectCallbacks({"list 7"});
    EXPECT_EQ(PLC_driver.retVar.address, 10);
}

TEST_F(FinishedRequests, OneFailureLeavesOtherQueuesAlone) {
    for (const RW_VAR &var : records("7@10+1 8@20+1")) {
        queueWrite(var);
        queueOnceRead(var);
    }
    send();
    EXPECT_EQ(noReply(), 41);
    EXPECT_EQ(PLC_driver.onceReadVarList.size(), 2);
}

TEST_F(FinishedRequests, CallbacksMayReadAndWriteValues) {
    queueWrite(recordOf(1, 2, record("7@10+1=3412")));
    duringCallback = [this](QList<RW_VAR> *list) {
        if (list != nullptr) {
            list->append(record("7@99+1"));  // dropped
            return;
        }
        EXPECT_EQ(getValues("7@10+1"), bytes("3412"));
        EXPECT_EQ(setValues("7@11+1=7856", 3, 4), 0);
        addCyclic(record("9@1+1"));
        EnableEthernet(9, 0);
    };
    EXPECT_EQ(exchange(), 1);
    EXPECT_EQ(listText(PLC_driver.writeVarList), "7@11+1=7856");
    EXPECT_EQ(PLC_driver.retVar.address, 10);
    send();
    EXPECT_EQ(noReply(), 44);
    EXPECT_EQ(listText(PLC_driver.writeVarList), "");  // the one written in the callback is a namesake
    EXPECT_EQ(listText(PLC_driver.readVarList), "9@1+1 9@1+1");
    expectCallbacks({"done 1/2", "failed 3/4", "list 3"});
}

}  // namespace
