#include "support/driver_scene.h"

namespace {

class Queues : public DriverScene {
protected:
    static int checkOnceRead(const std::string &text) {
        RW_VAR var = record(text);
        return AddListOnceReadVar(&var, 0);
    }
};

// Frame limit, request, entries, request as the caller gets it back: the last piece, uncut by area bounds. Requests
// that are refused before they are worked out keep their address, no elements queue nothing.
const char kOnceReads[] = R"(
    32 > 7@100+70 > 7@100+32 7@132+32 7@164+6 > 7@164+6; 32 > 7@100+64 > 7@100+32 7@132+32 > 7@132+32
    32 > 0@0+300 > 0@0+256 0@256+44 > 0@256+44         ; 32 > 12@100+3 > 7@100+4 > 7@100+4
    32 > 13@10+3 > 13@10+2 > 13@10+2                   ; 32 > 16@2.5+20 > 8@2+2 > 8@2+2
    32 > 3@250+10 > 3@250+6 3@256+4 > 3@250+10         ; 32 > 8@250+40 > 8@250+6 8@256+26 8@282+8 > 8@282+8
    32 > 7@7990+20 > 7@7990+10 7@8000+10 > 7@7990+20   ; 0 > 7@5+2 > 7@5+1 7@6+1 > 7@6+1
    -3 > 1@0+9 > 1@0+8 1@8+1 > 1@8+1                   ; 2147483647 > 1@0+3000 > 1@0+3000 > 1@0+3000
    32 > 7@5+0 >  > 7@5+0; 32 > 7@5+-70 >  > 7@5+-70   ; 32 > 15@5.5+-1 >  > 7@5+1; 32 > 7@x+2 >  > 7@-77+2
    32 > 13@5+-2147483648 >  > 13@5+-1073741823        ; 32 > 7@-5+2 >  > 7@-77+2 ; 32 > 22@5+2 >  > 22@5+2
    32 > 7@5+1048577 >  > 7@-77+1048577                ; 32 > 0/7@5+2 >  > 0/7@5+2)";

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
        EXPECT_EQ(var.param1, var.address == -77 ? 9 : 0);
        EXPECT_EQ(var.param2, var.param1);
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
    int size = 0;
    for (const char *text : {"7@100+5:1/2", "7@101+5:1/2", "7@100+4:1/2", "8@100+5:1/2", "2/7@100+5:1/2", "7@100+5:2/2",
                             "7@100+5:1/3", "7@100+5:1/2^1"}) {
        EXPECT_EQ(checkOnceRead(text), ++size) << text;
        EXPECT_EQ(checkOnceRead(text), size) << text;  // the head counts
    }
    restart();
    EXPECT_EQ(checkOnceRead("3@250+10"), 2);  // an entry is compared with the piece before it is cut at a bound
    EXPECT_EQ(checkOnceRead("3@250+10"), 4);
    EXPECT_EQ(checkOnceRead("3@250+6"), 4);
}

TEST_F(Queues, OnceReadBoundIsForTheCheckingModeAlone) {
    for (int i = 0; i < 1023; ++i) {
        queueOnceRead("7@1+1");
    }
    EXPECT_EQ(checkOnceRead("8@250+10"), 1025);  // one piece, two entries
    PLC_driver.onceReadVarList.removeLast();
    PLC_driver.onceReadVarList.removeLast();
    EXPECT_EQ(checkOnceRead("7@100+64"), 1024);
    queueOnceRead("7@1+1");
    EXPECT_EQ(PLC_driver.onceReadVarList.size(), 1025);
}

TEST_F(Queues, RecordsAsTheyStandAreQueuedUnlessTheirCountIsImpossible) {
    const std::string text = "0/99@-5+-2147483648=0102:3/4";
    RW_VAR var = record(text);
    for (const int size : {1, 2}) {
        EXPECT_EQ(AddListOnceReadVar(&var, 1), size);
        EXPECT_EQ(AddListWriteVar(&var, 1), size);
        EXPECT_EQ(AddListReadVar(&var), size);
    }
    var.count = kMaxElementCount + 1;
    EXPECT_EQ(AddListReadVar(&var), 0);
    for (const int mode : {0, 1}) {
        EXPECT_EQ(AddListWriteVar(&var, mode), 0);
        EXPECT_EQ(AddListOnceReadVar(&var, mode), 0);
    }
    const std::string twice = text + " " + text;
    for (const QList<RW_VAR> &list : {PLC_driver.onceReadVarList, PLC_driver.writeVarList, PLC_driver.readVarList}) {
        EXPECT_EQ(listText(list), twice);
    }
}

// Mode, queue before, write, queue after. Any mode but 1 replaces the first entry behind the head that has the same
// station, type, address and count.
const char kWrites[] = R"(
    0 >  > 7@1+1=aa > 7@1+1=aa; 0 > 7@1+1=aa 7@2+1=bb > 7@1+1=ff > 7@1+1=aa 7@2+1=bb 7@1+1=ff
    0 > 7@1+1=aa 7@2+1=bb:1/2 7@3+1=cc > 7@2+1=ff:8/9 > 7@1+1=aa 7@2+1=ff:8/9 7@3+1=cc
    -1 > 7@1+1=aa 7@2+1=bb 7@3+1=cc > 7@3+1=ff > 7@1+1=aa 7@2+1=bb 7@3+1=ff
    1 > 7@1+1=aa 7@2+1=bb 7@3+1=cc > 7@3+1=ff > 7@1+1=aa 7@2+1=bb 7@3+1=cc 7@3+1=ff
    0 > 7@2+1=bb 7@2+1=bb 7@2+1=bb > 7@2+1=ff > 7@2+1=bb 7@2+1=ff 7@2+1=bb
    0 > 7@1+1 7@2+1 > 7@2+2 > 7@1+1 7@2+1 7@2+2; 0 > 7@1+1 7@2+1 > 8@2+1 > 7@1+1 7@2+1 8@2+1
    0 > 7@1+1 7@2+1 > 2/7@2+1 > 7@1+1 7@2+1 2/7@2+1)";

TEST_F(Queues, WritesReplaceQueuedWritesButTheHead) {
    for (const Row &row : rows(kWrites)) {
        PLC_driver.writeVarList = records(row[1]);
        RW_VAR var = record(row[2]);
        const int size = AddListWriteVar(&var, row.number(0));
        EXPECT_EQ(size, PLC_driver.writeVarList.size());
        EXPECT_EQ(listText(PLC_driver.writeVarList), row[3]);
        EXPECT_EQ(listText({var}), row[2]);
    }
}

TEST_F(Queues, FullWriteQueueStillReplaces) {
    for (int i = 0; i < 1023; ++i) {
        queueWrite("7@1+1");
    }
    RW_VAR var = record("7@5+1=ff"), more = record("7@6+1");
    EXPECT_EQ(AddListWriteVar(&var, 0), 1024);
    EXPECT_EQ(AddListWriteVar(&more, 0), 1024);
    var.data = bytes("ee");
    EXPECT_EQ(AddListWriteVar(&var, 0), 1024);
    EXPECT_EQ(listText({PLC_driver.writeVarList.last()}), "7@5+1=ee");
    EXPECT_EQ(AddListWriteVar(&more, 1), 1025);
}

}  // namespace
