#include <QtCore/QVector>
#include <climits>

#include "support/driver_scene.h"

namespace {

using Lists = DriverScene;

int rebuild(const char *variables) {
    QList<ReadVarEntry> entries = hostEntries(variables);
    return ReCreatReadVarList(&entries);
}

TEST_F(Lists, RebuildReplacesTheCyclicListAndRestartsThePass) {
    for (const char *variables : {"", "22@1+1", "2/7@100+40 1@0+300 7@103+4 7@100+2"}) {
        const int kept = *variables == '\0' ? 1 : 0;  // no entries, no new pass
        queue("cyclic 9@9+9");
        PLC_driver.readCycleCount = settings.cycleDone = 1;
        const int requests = rebuild(variables);
        EXPECT_EQ(requests, PLC_driver.readVarList.size());
        EXPECT_EQ(PLC_driver.readCycleCount, kept);
        EXPECT_EQ(settings.cycleDone, kept);
    }
    EXPECT_EQ(left(), "1@0+256 1@256+44 7@100+7 2/7@100+32 2/7@132+8");
}

TEST_F(Lists, RebuildWhileARequestIsOut) {
    queue("cyclic 7@1+1");
    send();
    rebuild("8@0+1 9@1+1");
    EXPECT_EQ(answer("0103 02 1234"), 1);
    EXPECT_EQ(left(), "8@0+1 9@1+1") << "not rotated";
    EXPECT_EQ(cacheText(), "01070001=3412");
    send();
    rebuild("");
    PLC_driver.retVar.ownerId = 7;
    EXPECT_EQ(noReply(), 41);
    EXPECT_EQ(takeCallbacks(), "list 7");  // the result record as it stands
}

// The record comes back as its last piece, uncut by area bounds; refused before it was worked out, it keeps its
// address.

TEST_F(Lists, OnceReadsAreWorkedOutInEveryModeButOne) {
    for (const TableRow &row : table(cases("vars/func_initi", "once reads"))) {
        for (const int mode : {0, 2}) {
            SCOPED_TRACE(row.line());
            restart();
            settings.maxGroupLength = row.number("limit");
            settings.useVarStation = mode;
            RW_VAR var = record(row["given"]);
            settings.defaultStation = var.station;
            var.station += 1 - mode / 2;  // in mode 0 the station in force is another
            var.address = -77;
            var.param1 = var.param2 = 9;
            const int size = AddListOnceReadVar(&var, mode);
            EXPECT_EQ(size, PLC_driver.onceReadVarList.size());
            EXPECT_EQ(left(), row["queue"]);
            const bool worked = var.address != -77;
            EXPECT_EQ(listText({var}), (worked || mode != 0 ? "" : "2/") + row.text("record afterwards"));
            EXPECT_EQ(std::pair(var.param1, var.param2), worked ? std::pair(0, 0) : std::pair(9, 9));
        }
    }
}

TEST_F(Lists, RecordsAsTheyStandAreQueuedUnlessTheirCountIsImpossible) {
    for (const int count : {INT_MIN, int(kMaxElementCount), kMaxElementCount + 1}) {
        restart();
        const int possible = count <= kMaxElementCount ? 1 : 0;
        RW_VAR var = record("0/99@-5+0=0102:3/4");
        var.count = count;
        for (int size = 1; size <= 1025; ++size) {  // no bound
            EXPECT_EQ(AddListOnceReadVar(&var, 1), size * possible);
            EXPECT_EQ(AddListWriteVar(&var, 1), size * possible);
            EXPECT_EQ(AddListReadVar(&var), size * possible);
        }
        EXPECT_EQ(AddListWriteVar(&var, 0), 1025 * possible) << "replaces the second";
        EXPECT_EQ(AddListWriteVar(&var, 2), 1025 * possible) << "as any mode but 1";
        EXPECT_EQ(left(), listText(QVector<RW_VAR>(3 * 1025 * possible, var).toList()));
    }
}

}  // namespace
