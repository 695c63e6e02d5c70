// The named builders: which requests they queue, how many replies finish the operation, what shows in the cache.
#include "codec/Func_Read.h"
#include "codec/Func_Write.h"
#include "remote/Func_Remote.h"
#include "support/driver_scene.h"

namespace {

using StartedOperations = DriverScene;

TEST_F(StartedOperations, QueueTheirRequests) {
    const struct {
        const char *name;
        void (*build)(RW_VAR *);
        const char *variable, *requests, *shown, *shownWhileTheLinkIsDown;
    } cases[] = {
        {"read", ReadRegister, "7@100+2", "7@100+2", "", ""},
        {"write", WriteAnalog, "7@1+2=341278", "7@1+2=341278", "", ""},
        {"write of the scheduler", WriteRegister, "7@1+2=341278", "7@1+2=341278", "01070001=3412 01070002=7800", ""},
        {"write of a bit", WriteRegister, "16@37+1=01", "8@2+1=0000 8@2+1=0000", "01080002=2000", ""},
        {"bit, not written in halves", WriteAnalog, "16@37+1=01", "16@37+1=01", "", ""},
        {"remote read", Remote_ReadVar, "15@163+1", "15@163+1", "", ""},
        {"remote write of a bit", Remote_WriteVar, "15@163+1=01", "15@163+1=01", "0107000a=0800", "0107000a=0800"},
    };
    for (const auto &row : cases) {
        for (const bool linkDown : {false, true}) {
            SCOPED_TRACE(row.name);
            restart();
            settings.frameTotal = settings.frameDone = 7;
            PLC_driver.comFailed = linkDown ? 1 : 0;
            RW_VAR var = record(row.variable);
            {
                const QMutexLocker lock(&PLC_driver.listMutex);
                row.build(&var);
            }
            EXPECT_EQ(listText({var}), row.variable) << "only read";
            QList<RW_VAR> requested;
            while (!PLC_driver.protocolList.isEmpty()) {
                requested.append(PLC_driver.protocolList.takeFirst().var);
            }
            EXPECT_EQ(listText(requested), row.requests);
            EXPECT_EQ(settings.frameDone, 0);
            EXPECT_EQ(settings.frameTotal, requested.size());
            EXPECT_EQ(cacheText(), linkDown ? row.shownWhileTheLinkIsDown : row.shown);
        }
    }
}

}  // namespace
