// Which request goes on the wire next: writes before one-shot reads before cyclic reads, five in a row at most of each
// of the first two.
#include <QtCore/QMutexLocker>

#include "codec/Func_Read.h"
#include "codec/Func_Write.h"
#include "driver/Communication_Protocol.h"
#include "driver/rotation.h"
#include "driver/station_table.h"
#include "remote/Func_Remote.h"

namespace {

const int kServedInARow = 5;

typedef void (*Builder)(RW_VAR *var);

Builder readBuilder() {
    return PLC_driver.comInfo->remoteMode ? Remote_ReadVar : ReadRegister;
}

Builder writeBuilder() {
    return PLC_driver.comInfo->remoteMode ? Remote_WriteVar : WriteRegister;
}

// Builds the request of a queue's head, which stays there until its reply is in. Entries of disabled stations are
// dropped on the way. False: nothing was built.
bool serveQueue(QList<RW_VAR> &queue, int &served, Builder build, RequestKind kind) {
    if (served >= kServedInARow) {
        return false;
    }
    while (!queue.isEmpty() && Ethernetcontains(queue.at(0).station)) {
        queue.removeFirst();
    }
    if (queue.isEmpty()) {
        return false;
    }
    build(&queue.first());
    PLC_driver.comType = kind;
    ++served;
    return true;
}

// Entries of disabled stations before the first one of another; all entries when there is none.
int disabledAtHead(const QList<RW_VAR> &list) {
    if (Ethernetcontains(list.at(0).station) == 0) {
        return 0;
    }
    const QMap<int, int> disabled = disabledStations();
    int count = 1;
    while (count < list.size() && disabled.contains(list.at(count).station)) {
        ++count;
    }
    return count;
}

// Entries of disabled stations are rotated past, each once at most: with none enabled the order is the same again.
void serveCyclicList() {
    QList<RW_VAR> &list = PLC_driver.readVarList;
    if (list.isEmpty()) {
        return;
    }
    const int skipped = disabledAtHead(list);
    if (skipped == list.size()) {
        return;
    }
    for (int i = 0; i < skipped; ++i) {
        headToTail(list);
    }
    readBuilder()(&list.first());
    list.first().retValue = kInFlight;  // the request keeps the value from before
    PLC_driver.comType = kCyclicRead;
    PLC_driver.writeTimes = 0;
    PLC_driver.onceReadTimes = 0;
}

}  // namespace

Protocol *ComCommunication() {
    Communication_Protocol &driver = PLC_driver;
    if (!driver.comInfo) {
        return nullptr;
    }
    if (!driver.protocolList.isEmpty()) {
        return &driver.protocolList.first();
    }
    QMutexLocker lock(&driver.listMutex);
    if (!serveQueue(driver.writeVarList, driver.writeTimes, writeBuilder(), kWrite) &&
        !serveQueue(driver.onceReadVarList, driver.onceReadTimes, readBuilder(), kOnceRead)) {
        serveCyclicList();
    }
    if (driver.protocolList.isEmpty()) {
        driver.writeTimes = 0;
        driver.onceReadTimes = 0;
        driver.comInfo->cycleDone = 1;
        return nullptr;
    }
    return &driver.protocolList.first();
}
