#include "vars/Func_Initi.h"

#include "support/driver_scene.h"

namespace {

using Lists = DriverScene;

int rebuild(const char *variables) {
    QList<ReadVarEntry> entries = hostEntries(variables);
    return ReCreatReadVarList(&entries);
}

TEST_F(Lists, RebuildReplacesTheCyclicListAndRestartsThePass) {
    for (const char *variables : {"", "22@1+1", "2/7@100+40 1@0+300 7@103+4 7@100+2"}) {
        const bool any = *variables != '\0';
        addCyclic("9@9+9");
        PLC_driver.readCycleCount = settings.cycleDone = 1;
        const int size = rebuild(variables);
        EXPECT_EQ(size, PLC_driver.readVarList.size());
        EXPECT_EQ(PLC_driver.readCycleCount, any ? 0 : 1) << "no entries, no new pass";
        EXPECT_EQ(settings.cycleDone, any ? 0 : 1);
    }
    EXPECT_EQ(listText(PLC_driver.readVarList), "1@0+256 1@256+44 7@100+7 2/7@100+32 2/7@132+8");
    settings.maxGroupLength = -2147483647 - 1;  // counts as 1
    EXPECT_EQ(rebuild("7@5+2 1@0+11"), 4);
    settings.maxGroupLength = 2147483647;
    EXPECT_EQ(rebuild("1@0+1048576"), 1);
    const QMutexLocker lock(&PLC_driver.listMutex);
    QList<RW_VAR> group = records("1@1048570+9");
    BitVarReCreat(&group, 5);
    EXPECT_EQ(listText(PLC_driver.readVarList), "1@0+1048576 1@1048570+5 1@1048575+4") << "another group";
}

TEST_F(Lists, RebuildWhileARequestIsOut) {
    addCyclic("7@1+1");
    send();
    rebuild("8@0+1 9@1+1");
    EXPECT_EQ(answer("0103 02 1234"), 1);
    EXPECT_EQ(listText(PLC_driver.readVarList), "8@0+1 9@1+1") << "not rotated";
    EXPECT_EQ(cacheText(), "01070001=3412");
    send();
    rebuild("");
    PLC_driver.retVar.ownerId = 7;
    EXPECT_EQ(noReply(), 41);
    expectCallbacks("list 7");  // the result record as it stands
}

// The record comes back as its last piece, uncut by area bounds; refused before it was worked out, it keeps its
// address.

TEST_F(Lists, OnceReadsAreWorkedOutInEveryModeButOne) {
    for (const TableRow &row : table(cases("vars/func_initi", "once reads"))) {
        for (const int mode : {0, 2}) {
            SCOPED_TRACE(row.line());
            restart();
            settings.maxGroupLength = row.number("limit");
            RW_VAR var = record(row["given"]);
            var.address = -77;
            var.param1 = var.param2 = 9;
            const int size = AddListOnceReadVar(&var, mode);
            EXPECT_EQ(size, PLC_driver.onceReadVarList.size());
            EXPECT_EQ(listText(PLC_driver.onceReadVarList), row["queue"]);
            EXPECT_EQ(listText({var}), row["record afterwards"]);
            EXPECT_EQ(var.param1, var.address == -77 ? 9 : 0);
            EXPECT_EQ(var.param2, var.address == -77 ? 9 : 0);
        }
    }
    settings.maxGroupLength = 32;
    settings.useVarStation = 0;
    settings.defaultStation = 9;
    RW_VAR var = record("7/7@5+1");
    EXPECT_EQ(AddListOnceReadVar(&var, 0), 1);
    EXPECT_EQ(listText(PLC_driver.onceReadVarList), "9/7@5+1");
}

TEST_F(Lists, RecordsAsTheyStandAreQueuedUnlessTheirCountIsImpossible) {
    for (const int count : {-2147483647 - 1, int(kMaxElementCount), kMaxElementCount + 1}) {
        restart();
        const bool possible = count <= kMaxElementCount;
        RW_VAR var = record("0/99@-5+0=0102:3/4");
        var.count = count;
        const std::string twice = listText({var, var});
        for (const int size : {1, 2}) {
            EXPECT_EQ(AddListOnceReadVar(&var, 1), possible ? size : 0);
            EXPECT_EQ(AddListWriteVar(&var, 1), possible ? size : 0);
            EXPECT_EQ(AddListReadVar(&var), possible ? size : 0);
        }
        EXPECT_EQ(AddListWriteVar(&var, 0), possible ? 2 : 0) << "replaces the second";
        EXPECT_EQ(AddListWriteVar(&var, 2), possible ? 2 : 0) << "as any mode but 1";
        for (const auto &list : {PLC_driver.onceReadVarList, PLC_driver.writeVarList, PLC_driver.readVarList}) {
            EXPECT_EQ(listText(list), possible ? twice : "");
        }
    }
    restart();
    queueOnceRead(QByteArray("7@1+1 ").repeated(1025).toStdString());
    EXPECT_EQ(PLC_driver.onceReadVarList.size(), 1025) << "no bound";
}

}  // namespace
