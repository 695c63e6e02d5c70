#include <climits>

#include "support/driver_scene.h"

namespace {

class Queues : public DriverScene {
protected:
    static int checkOnceRead(RW_VAR var) { return AddListOnceReadVar(&var, 0); }
    static int checkOnceRead(const char *var) { return checkOnceRead(record(var)); }
};

// Frame limit, request, queue, request as the caller gets it back: the last piece, uncut by area bounds.
const char kOnceReads[] = R"(
    32 > 7@100+70 > 7@100+32 7@132+32 7@164+6 > 7@164+6; 32 > 7@100+64 > 7@100+32 7@132+32 > 7@132+32
    32 > 0@0+300 > 0@0+256 0@256+44 > 0@256+44         ; 32 > 12@100+3 > 7@100+4 > 7@100+4
    32 > 13@10+3 > 13@10+2 > 13@10+2                   ; 32 > 16@2.5+20 > 8@2+2 > 8@2+2
    32 > 3@250+10 > 3@250+6 3@256+4 > 3@250+10         ; 32 > 8@250+40 > 8@250+6 8@256+26 8@282+8 > 8@282+8
    32 > 7@7990+20 > 7@7990+10 7@8000+10 > 7@7990+20   ; 0 > 7@5+2 > 7@5+1 7@6+1 > 7@6+1
    -3 > 1@0+9 > 1@0+8 1@8+1 > 1@8+1                   ; 2147483647 > 1@0+3000 > 1@0+3000 > 1@0+3000)";

TEST_F(Queues, OnceReadsAreWorkedOut) {
    for (const Row &row : rows(kOnceReads)) {
        SCOPED_TRACE(row.text);
        restart();
        settings.maxGroupLength = row.number(0);
        RW_VAR var = record(row[1]);
        var.address = -77;
        var.param1 = var.param2 = 9;
        const int size = AddListOnceReadVar(&var, 0);
        EXPECT_EQ(size, PLC_driver.onceReadVarList.size());
        EXPECT_EQ(listText(PLC_driver.onceReadVarList), row[2]);
        EXPECT_EQ(listText({var}), row[3]);
        EXPECT_EQ(var.param1 + var.param2 + PLC_driver.onceReadVarList.last().param1, 0);
    }
}

TEST_F(Queues, OnceReadsOfNoElementsQueueNothing) {
    queueOnceRead(record("7@1+1"));
    for (const char *type : {"0@5", "7@5", "12@5", "13@5", "15@5.5"}) {
        for (const int count : {-1, -3, -31, -32, -70, INT_MIN}) {
            const std::string var = std::string(type) + "+" + std::to_string(count);
            EXPECT_EQ(checkOnceRead(var.c_str()), 1) << var;
        }
    }
    EXPECT_EQ(checkOnceRead("7@5+0"), 1);
    EXPECT_EQ(checkOnceRead("13@5+0"), 1);
}

TEST_F(Queues, RefusedOnceReads) {
    struct {
        int defaultStation;
        const char *added, *record;
    } const kRefusals[] = {{5, "7@x+2", "7@-77+2"}, {5, "7@-5+2", "7@-77+2"}, {0, "7@5+2", "0/7@5+2"},
                           {1, "22@5+2", "22@5+2"}, {1, "-1@5+2", "-1@5+2"},  {5, "7@5+1048577", "7@-77+1048577"}};
    settings.useVarStation = 0;
    queueOnceRead(record("7@1+1"));
    for (const auto &row : kRefusals) {
        settings.defaultStation = row.defaultStation;
        RW_VAR var = record(row.added);
        var.address = -77;
        var.param1 = 9;
        EXPECT_EQ(AddListOnceReadVar(&var, 0), 0) << row.added;
        EXPECT_EQ(listText({var}), row.record);
        EXPECT_EQ(var.param1, var.address == -77 ? 9 : 0) << row.added;
        EXPECT_EQ(PLC_driver.onceReadVarList.size(), 1) << row.added;
    }
}

TEST_F(Queues, StationOfAOnceRead) {
    checkOnceRead("7/7@5+1");
    settings.useVarStation = 0;
    settings.defaultStation = 9;
    checkOnceRead("7/7@5+1");
    EXPECT_EQ(listText(PLC_driver.onceReadVarList), "7/7@5+1 9/7@5+1");
}

TEST_F(Queues, IdentityOfAOnceRead) {
    const RW_VAR first = recordOf(1, 2, record("7@100+5"));
    EXPECT_EQ(checkOnceRead(first), 1);
    RW_VAR sameIdentity = recordOf(1, 2, record("7@100+5=01"));
    sameIdentity.accessFlag = sameIdentity.remoteMode = sameIdentity.retValue = 5;
    EXPECT_EQ(checkOnceRead(sameIdentity), 1);  // the head counts
    int size = 1;
    for (int RW_VAR::*field :
         {&RW_VAR::ownerId, &RW_VAR::itemId, &RW_VAR::nodeId, &RW_VAR::station, &RW_VAR::elemType, &RW_VAR::count}) {
        RW_VAR other = first;
        other.*field += 1;
        EXPECT_EQ(checkOnceRead(other), ++size);
        EXPECT_EQ(checkOnceRead(other), size);
    }
    EXPECT_EQ(checkOnceRead(recordOf(1, 2, record("7@101+5"))), ++size);
}

TEST_F(Queues, IdentityOfAOnceReadIsThatOfTheUncutPiece) {
    EXPECT_EQ(checkOnceRead("3@250+10"), 2);
    EXPECT_EQ(checkOnceRead("3@250+10"), 4);
    EXPECT_EQ(checkOnceRead("3@250+6"), 4);
    RW_VAR again = record("7@100+70");
    EXPECT_EQ(AddListOnceReadVar(&again, 0), 7);
    EXPECT_EQ(AddListOnceReadVar(&again, 0), 8);  // now 100+6: a new, shorter piece
    EXPECT_EQ(listText({PLC_driver.onceReadVarList.last()}), "7@100+6");
}

TEST_F(Queues, OnceReadBoundIsForTheCheckingModeAlone) {
    for (int i = 0; i < 1023; ++i) {
        queueOnceRead(record("7@1+1"));
    }
    EXPECT_EQ(checkOnceRead("8@250+10"), 1025);  // one piece, two entries
    PLC_driver.onceReadVarList.removeLast();
    PLC_driver.onceReadVarList.removeLast();
    EXPECT_EQ(checkOnceRead("7@100+64"), 1024);
    EXPECT_EQ(listText({PLC_driver.onceReadVarList.last()}), "7@100+32");
    EXPECT_EQ(queueOnceRead(record("7@1+1")), 1025);
}

TEST_F(Queues, PlainModesQueueAnythingButImpossibleCounts) {
    RW_VAR var = record("0/99@x+-2147483648");
    EXPECT_EQ(AddListOnceReadVar(&var, 1), 1);
    EXPECT_EQ(AddListOnceReadVar(&var, 1), 2);
    EXPECT_EQ(AddListWriteVar(&var, 1), 1);
    EXPECT_EQ(listText({var, PLC_driver.onceReadVarList.at(1)}), "0/99@0+-2147483648 0/99@0+-2147483648");
    var.count = kMaxElementCount + 1;
    for (const int mode : {0, 1}) {
        EXPECT_EQ(AddListWriteVar(&var, mode), 0);
        EXPECT_EQ(AddListOnceReadVar(&var, mode), 0);
    }
    EXPECT_EQ(PLC_driver.writeVarList.size(), 1);
    EXPECT_EQ(PLC_driver.onceReadVarList.size(), 2);
}

// Mode, queue before, write, queue after. Any mode but 1 replaces the first entry behind the head that has the same
// station, type, address and count.
const char kWrites[] = R"(
    0 >  > 7@1+1=aa > 7@1+1=aa; 0 > 7@1+1=aa > 7@1+1=ff > 7@1+1=aa 7@1+1=ff
    0 > 7@1+1=aa 7@2+1=bb > 7@1+1=ff > 7@1+1=aa 7@2+1=bb 7@1+1=ff
    0 > 7@1+1=aa 7@2+1=bb 7@3+1=cc > 7@3+1=ff > 7@1+1=aa 7@2+1=bb 7@3+1=ff
    -1 > 7@1+1=aa 7@2+1=bb 7@3+1=cc > 7@3+1=ff > 7@1+1=aa 7@2+1=bb 7@3+1=ff
    1 > 7@1+1=aa 7@2+1=bb 7@3+1=cc > 7@3+1=ff > 7@1+1=aa 7@2+1=bb 7@3+1=cc 7@3+1=ff
    0 > 7@2+1=bb 7@2+1=bb 7@2+1=bb > 7@2+1=ff > 7@2+1=bb 7@2+1=ff 7@2+1=bb
    0 > 7@1+1=aa 7@2+1=bb > 7@2+2=ff > 7@1+1=aa 7@2+1=bb 7@2+2=ff
    0 > 7@1+1=aa 7@2+1=bb > 8@2+1=ff > 7@1+1=aa 7@2+1=bb 8@2+1=ff
    0 > 7@1+1=aa 7@2+1=bb > 2/7@2+1=ff > 7@1+1=aa 7@2+1=bb 2/7@2+1=ff)";

TEST_F(Queues, WritesReplaceQueuedWritesButTheHead) {
    for (const Row &row : rows(kWrites)) {
        SCOPED_TRACE(row.text);
        restart();
        PLC_driver.writeVarList = records(row[1]);
        RW_VAR var = recordOf(8, 9, record(row[2]));
        const int size = AddListWriteVar(&var, row.number(0));
        EXPECT_EQ(size, PLC_driver.writeVarList.size());
        EXPECT_EQ(listText(PLC_driver.writeVarList), row[3]);
        EXPECT_EQ(listText({var}), row[2]);
        const QList<RW_VAR> &queue = PLC_driver.writeVarList;
        for (const RW_VAR &entry : queue) {  // the identifiers come with the data
            EXPECT_EQ(entry.ownerId + entry.itemId, entry.data == var.data ? 17 : 0);
        }
    }
}

TEST_F(Queues, FullWriteQueueStillReplaces) {
    for (int i = 0; i < 1024; ++i) {
        queueWrite(record(7, i, 1));
    }
    RW_VAR head = record("7@0+1"), match = record("7@1023+1=ff"), more = record("7@5000+1");
    EXPECT_EQ(AddListWriteVar(&more, 0), 1024);
    EXPECT_EQ(AddListWriteVar(&head, 0), 1024);
    EXPECT_EQ(AddListWriteVar(&match, 0), 1024);
    EXPECT_EQ(listText({PLC_driver.writeVarList.last()}), "7@1023+1=ff");
    EXPECT_EQ(AddListWriteVar(&more, 1), 1025);
}

}  // namespace
