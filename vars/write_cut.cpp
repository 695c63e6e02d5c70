#include "vars/write_cut.h"

#include "codec/element_types.h"
#include "codec/value_layout.h"
#include "vars/request_merge.h"

namespace {

// As cutAtBound, and the data are cut too.
RW_VAR cutWriteAtBound(RW_VAR &var, int bound) {
    const QByteArray data = var.data;
    RW_VAR first = cutAtBound(var, bound);
    if (!isBitType(var.elemType)) {
        const int firstBytes = int(qMin<qint64>(qint64(first.count) * cacheEntrySize(var.elemType), data.size()));
        first.data = data.left(firstBytes);
        var.data = data.mid(firstBytes);
        return first;
    }
    first.data = data.left(first.count / 8 + (first.count % 8 != 0 ? 1 : 0));
    if (first.count % 8 == 0) {
        var.data = data.mid(first.count / 8);
    } else {
        const int kept = qMin(var.count, int(kMaxElementCount));
        var.data = packedBits(unpackedBits(data, first.count, kept), kept);
    }
    return first;
}

// count values of a word-pair write from value first on; nothing when there are none.
void appendPairs(QList<RW_VAR> &list, const RW_VAR &whole, int first, int count) {
    if (count < 1) {
        return;
    }
    RW_VAR part = whole;
    part.address = whole.address + 2 * first;
    part.count = count;
    part.data = whole.data.mid(first * 4, count * 4);
    list.append(part);
}

void appendHalf(QList<RW_VAR> &list, const RW_VAR &whole, int address, int dataOffset) {
    RW_VAR half = whole;
    half.elemType = getPlcReg(whole.elemType);
    half.address = address;
    half.count = 1;
    half.data = whole.data.mid(dataOffset, 2);
    list.append(half);
}

// Values of two registers each: whole ones below the bound, the one across it in halves, whole ones from the bound on.
void appendCutPairs(QList<RW_VAR> &list, const RW_VAR &var, int bound) {
    const int registersBelow = bound - var.address;
    const int below = registersBelow / 2;
    const int across = registersBelow % 2;
    appendPairs(list, var, 0, below);
    if (across != 0) {
        appendHalf(list, var, bound - 1, below * 4 + 2);  // the high half lies at the lower address
        appendHalf(list, var, bound, below * 4);
    }
    appendPairs(list, var, below + across, var.count - below - across);
}

bool pairsCrossBound(const RW_VAR &var, int bound) {
    return var.address < bound && qint64(var.address) + 2 * qint64(var.count) > bound;
}

void appendPairWrite(QList<RW_VAR> &list, const RW_VAR &var, int bound) {
    if (pairsCrossBound(var, bound)) {
        appendCutPairs(list, var, bound);
    } else {
        list.append(var);
    }
}

}  // namespace

void function_rw_var_add_write(QList<RW_VAR> &list, RW_VAR &var) {
    const int bound = listFunctionBound(var.elemType);
    if (crossesBound(var, bound)) {
        list.append(cutWriteAtBound(var, bound));
    }
    list.append(var);
}

void appendDriverWrite(QList<RW_VAR> &list, const RW_VAR &var) {
    const int bound = dravo::addressMapBound(var.elemType);
    if (isOfClass(var.elemType, dravo::WordPairClass)) {
        appendPairWrite(list, var, bound);
        return;
    }
    RW_VAR rest = var;
    if (crossesBound(rest, bound)) {
        RW_VAR first = cutWriteAtBound(rest, bound);
        if (isBitType(first.elemType) && first.count == 1) {
            // A single coil is switched on by any nonzero byte, and this one holds the neighbours' bits too.
            first.data = QByteArray(1, char(packedBit(first.data, 0)));
        }
        list.append(first);
    }
    list.append(rest);
}
