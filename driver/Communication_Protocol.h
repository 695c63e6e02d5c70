// The one driver object, PLC_driver: every list, lock, counter and cache of the driver. Which thread may touch what
// stands beside the members.
#ifndef DRAVO_DRIVER_COMMUNICATION_PROTOCOL_H
#define DRAVO_DRIVER_COMMUNICATION_PROTOCOL_H

#include <QtCore/QMap>
#include <QtCore/QMutex>

#include "cache/value_cache.h"
#include "korvel_dravo_port.h"

class Communication_Protocol {
public:
    Communication_Protocol();

    // Lock order: listMutex, then stationMutex or cacheMutex. Nothing else is taken while one of those two is held.
    // "communication thread": used there alone, without a lock.
    ComInfo *comInfo;               // the host's, null while unbound
    QList<RW_VAR> readVarList;      // listMutex; cyclic reads, rotated head to tail
    QList<RW_VAR> writeVarList;     // listMutex; head = write being served
    QList<RW_VAR> onceReadVarList;  // listMutex; head = one-shot read being served
    QList<RW_VAR> spareVarList;     // always empty
    QList<Protocol> protocolList;   // communication thread; head = request on the wire; never copied
    QList<EXTENDVAR> extendVars;    // always empty
    VarCallBack varCallBack;        // null: not called
    ListCallBack listCallBack;      // null: not called
    QMutex listMutex;               // not recursive, like the other two
    QMutex cacheMutex;              //
    QMutex stationMutex;            //
    QMap<int, int> stationMap;      // stationMutex; keys = disabled stations, values 0
    RW_VAR retVar;                  // listMutex; the result record, data always empty
    int comType;                    // listMutex; a RequestKind
    int writeTimes;                 // listMutex; writes served since the last reset
    int onceReadTimes;              // listMutex; one-shot reads served since the last reset
    int readCycleCount;             // listMutex; finished local operations counted toward cycleDone
    unsigned char comFailed;        // communication thread; 1 from a failed request to the next good reply
    unsigned char spareFlag;        // always 0
    ValueCache valueCache;          // cacheMutex
};

/// Whether a thread holds the mutex: for functions that expect their caller to. Called in debug builds only.
inline bool isHeld(QMutex &mutex) {
    if (!mutex.tryLock()) {
        return true;
    }
    mutex.unlock();
    return false;
}

/// retValue of the cyclic entry whose request is on the wire.
const int kInFlight = -1;

/// What comType may hold: the kind of the request built last.
enum RequestKind { kCyclicRead = 0, kWrite = 1, kOnceRead = 2, kNothingBuilt = 100 };

#endif  // DRAVO_DRIVER_COMMUNICATION_PROTOCOL_H
