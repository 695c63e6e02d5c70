#include "vars/cyclic_list.h"

#include "support/driver_scene.h"

namespace {

/// A host's entry may be longer than what the driver reads of it.
struct HostEntry {
    ReadVarEntry known;
    unsigned char more[72];
};

class CyclicList : public DriverScene {
protected:
    int rebuild(const char *variables) {
        QList<HostEntry> entries;
        for (const RW_VAR &variable : records(variables)) {
            HostEntry entry = HostEntry();
            entry.known.elemType = static_cast<unsigned char>(variable.elemType);
            entry.known.station = static_cast<unsigned char>(variable.station);
            entry.known.addressText = variable.addressText;
            entry.known.label = QString::fromLatin1("v%1").arg(entries.size());
            entry.known.count = variable.count;
            entries.append(entry);
        }
        const QList<HostEntry> shared = entries;  // a host that shares its list: looking must not detach it
        const int requests = ReCreatReadVarList(reinterpret_cast<QList<ReadVarEntry> *>(&entries));
        EXPECT_TRUE(entries.isSharedWith(shared));
        EXPECT_EQ(requests, PLC_driver.readVarList.size());
        return requests;
    }
};

// Frame limit, variables, requests: gaps, reach, overlap, nesting; frame limits; area bounds reached at once or by
// growing; groups; bad entries, which lose nothing else; no elements.
const char kLists[] = R"(
    32 > 7@103+4 7@100+2 > 7@100+7; 32 > 7@100+2 7@140+2 > 7@100+2 7@140+2; 32 > 7@100+5 7@100+2 > 7@100+5
    32 > 7@100+2 7@132+2 > 7@100+2 7@132+2; 32 > 7@100+2 7@131+1 > 7@100+32; 32 > 7@100+2 7@131+2 > 7@100+32 7@132+1
    32 > 7@100+20 7@105+2 7@119+2 > 7@100+21; 32 > 7@100+30 7@125+10 7@160+4 > 7@100+32 7@132+32
    32 > 7@0+70 > 7@0+32 7@32+32 7@64+6; 32 > 0@0+300 > 0@0+256 0@256+44; 1 > 7@5+2 1@0+9 > 1@0+8 1@8+1 7@5+1 7@6+1
    -2147483648 > 7@5+2 1@0+9 > 1@0+8 1@8+1 7@5+1 7@6+1; 0 > 7@5+2 > 7@5+1 7@6+1
    2147483647 > 1@0+1000 1@3720+3 7@0+5000 > 1@0+2003 7@0+5000; 32 > 8@250+40 > 8@250+6 8@256+26 8@282+8
    32 > 3@250+40 > 3@250+6 3@256+34; 32 > 8@250+2 8@254+10 8@270+2 > 8@250+6 8@256+16
    32 > 8@255+1 8@256+1 > 8@255+1 8@256+1; 32 > 7@7990+10 > 7@7990+10; 32 > 7@7990+20 > 7@7990+10 7@8000+10
    8 > 7@7990+20 > 7@7990+8 7@7998+2 7@8000+6 7@8006+4; 32 > 7@7990+2 7@7999+4 7@8010+2 > 7@7990+10 7@8000+12
    32 > 12@7999+2 > 7@7999+1 7@8000+1; 32 > 13@254+8 > 13@254+2 13@256+2; 32 > 16@2.5+20 > 8@2+2
    32 > 7@2147483640+2 7@2147483647+1 > 7@2147483640+8; 32 > 7@100+2 12@102+3 15@106.3+1 > 7@100+7
    32 > 2/7@5+1 7@9+1 0@7+1 255/7@1+1 8@10+1 > 0@7+1 7@9+1 8@10+1 2/7@5+1 255/7@1+1; 32 > 0/7@6+1 22@6+1 >
    32 > 7@x+1 7@5+1 0/7@6+1 22@6+1 255@6+1 1@8+1 7@-6+1 15@6+1 7@6+1048577 1@6+2147483647 7@8+1 > 7@5+4
    32 > 7@6+0 7@100+-5 7@200+-2147483648 >; 32 > 7@100+2 7@120+0 7@140+0 7@131+1 > 7@100+32)";

TEST_F(CyclicList, MergedRequests) {
    for (const Row &row : rows(kLists)) {
        SCOPED_TRACE(row.text);
        restart();
        addCyclic("9@9+9");  // dropped by the rebuild
        settings.maxGroupLength = row.number(0);
        rebuild(row[1]);
        EXPECT_EQ(listText(PLC_driver.readVarList), row[2]);
    }
    EXPECT_EQ(rebuild("1@0+1048576"), 4096);
}

TEST_F(CyclicList, SettingsInTheRequests) {
    settings.remoteMode = 3;
    settings.localNode = 4;
    settings.useVarStation = 0;
    settings.defaultStation = 300;
    rebuild("2/7@103+40 0/12@100+2");
    EXPECT_EQ(listText(PLC_driver.readVarList), "300/7@100+32^4 300/7@132+11^4");
    const QList<RW_VAR> &requests = PLC_driver.readVarList;
    for (const RW_VAR &entry : requests) {
        EXPECT_EQ(entry.itemId, -1);
        EXPECT_EQ(entry.remoteMode, 3);
        EXPECT_EQ(entry.accessFlag + entry.retValue + entry.param1 + entry.param2, 0);
        EXPECT_EQ(entry.label + entry.addressText, QString::fromLatin1("v1100"));
    }
    settings.defaultStation = 0;
    EXPECT_EQ(rebuild("2/7@5+1"), 0);
}

TEST_F(CyclicList, RebuildRestartsThePassUnlessThereAreNoEntries) {
    addCyclic("7@1+1");
    PLC_driver.readCycleCount = 5;
    settings.cycleDone = 1;
    EXPECT_EQ(rebuild(""), 0);
    EXPECT_EQ(PLC_driver.readCycleCount + settings.cycleDone, 6);
    EXPECT_EQ(rebuild("22@1+1"), 0);
    EXPECT_EQ(PLC_driver.readCycleCount, 0);
    EXPECT_EQ(settings.cycleDone, 0);
}

TEST_F(CyclicList, RebuildWhileARequestIsOut) {
    addCyclic("7@1+1");
    send();
    rebuild("8@0+1 9@1+1");
    EXPECT_EQ(answer("0103 02 1234"), 1);
    EXPECT_EQ(listText(PLC_driver.readVarList), "8@0+1 9@1+1");  // not rotated
    EXPECT_EQ(cacheText(), "01070001=3412");
    send();
    rebuild("");
    PLC_driver.retVar.ownerId = 7;
    EXPECT_EQ(noReply(), 41);
    expectCallbacks("list 7");  // the result record as it stands
}

TEST_F(CyclicList, SortIsStableAndSigned) {
    QList<RW_VAR> list = records("7@5+0 7@2147483647+1 7@-1+2 7@5+3 7@-2147483648+4 7@0+5 7@5+6 7@-1+7");
    Bubble_Sort(&list);
    EXPECT_EQ(listText(list), "7@-2147483648+4 7@-1+2 7@-1+7 7@0+5 7@5+0 7@5+3 7@5+6 7@2147483647+1");
}

}  // namespace
