// The driver as it is promised: a plain second one that does each operation in the simplest way, for comparison.
#ifndef DRAVO_FUZZ_DRIVER_MODEL_H
#define DRAVO_FUZZ_DRIVER_MODEL_H

#include <deque>
#include <functional>
#include <set>

#include "fuzz/driver_values.h"
#include "korvel_dravo_port.h"

namespace reference {

/// A call of one of the two callbacks.
struct Callback {
    enum Kind { Var, List } kind;
    void *context;
    int ownerId;
    int itemId;
    int code;

    bool operator==(const Callback &other) const {
        return kind == other.kind && context == other.context && ownerId == other.ownerId && itemId == other.itemId &&
               code == other.code;
    }
};

struct Model {
    // What the host did.
    enum { kRecords = 2 };
    ComInfo records[kRecords] = {};
    ComInfo *settings = nullptr;  // the bound one of records
    bool hasVarCallBack = false;
    bool hasListCallBack = false;
    std::function<void(const Callback &)> called;  // where a callback is due

    QList<RW_VAR> cyclic;
    QList<RW_VAR> writes;
    QList<RW_VAR> onceReads;
    std::deque<Protocol> outstanding;
    std::set<int> disabled;
    Values values;
    RW_VAR result = RW_VAR();
    int kind = 100;
    int writesInARow = 0;
    int onceReadsInARow = 0;
    int passCount = 0;
    bool failed = false;

    // As the entry points of the same purpose; var and out are what the host finds afterwards.
    void bind(int record);
    int addCyclic(const RW_VAR &var);
    int addOnceRead(RW_VAR &var, int mode);
    int addWrite(const RW_VAR &var, int mode);
    int rebuild(const QList<ReadVarEntry> &entries);
    int getValues(int type, const QString &addressText, int station, QByteArray &out, int count);
    int setValues(RW_VAR record, const QByteArray &hostValues, int hostCount);
    void enableStation(int station, int enable);
    /// False: nothing to send.
    bool next();
    /// The result code.
    int answer(const QByteArray *reply, int length);

private:
    enum Verdict { Rejected, ToStore, NothingToStore };

    bool serve(QList<RW_VAR> &queue, int &inARow, int servedKind);
    void serveCyclic();
    void build(const RW_VAR &var, bool write);
    void buildBitWrite(const RW_VAR &var);

    int judge(const Protocol &request, const QByteArray &reply, int length);
    Verdict check(const Protocol &request, const QByteArray &reply) const;
    void completeBitWrite(const QByteArray &reply);
    void countTowardPass();
    bool retry();
    void finish(bool remote);
    void finishHead(QList<RW_VAR> &queue, bool report, bool ownNodeOnly);
    void reportFailure();
};

}  // namespace reference

#endif  // DRAVO_FUZZ_DRIVER_MODEL_H
