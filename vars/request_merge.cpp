#include "vars/request_merge.h"

#include "codec/element_types.h"
#include "codec/frame_bytes.h"

namespace {

bool crossesBound(const RW_VAR &var, int bound) {
    return var.address < bound && qint64(var.address) + var.count > bound;
}

// Takes the part below the bound off var, which keeps the rest. The data stay as they are.
RW_VAR cutAtBound(RW_VAR &var, int bound) {
    RW_VAR first = var;
    first.count = bound - var.address;
    var.address = bound;
    var.count -= first.count;
    return first;
}

void appendRead(QList<RW_VAR> &list, RW_VAR &var, int bound) {
    if (crossesBound(var, bound)) {
        list.append(cutAtBound(var, bound));
    }
    list.append(var);
}

void reviseLast(QList<RW_VAR> &list, RW_VAR &var, int bound) {
    if (!crossesBound(var, bound)) {
        list.last().count = var.count;
        return;
    }
    list.last().count = cutAtBound(var, bound).count;
    list.append(var);
}

// The count bits from bit first on, packed again from bit 0.
QByteArray bitsFrom(const QByteArray &data, int first, int count) {
    const int kept = qMin(count, int(kMaxElementCount));
    QByteArray packed((kept + 7) / 8, '\0');
    char *bytes = packed.data();
    for (int i = 0; i < kept; ++i) {
        if (valueBit(data, qint64(first) + i)) {
            bytes[i / 8] = char(bytes[i / 8] | 1 << (i % 8));
        }
    }
    return packed;
}

// As cutAtBound, and the data are cut too.
RW_VAR cutWriteAtBound(RW_VAR &var, int bound) {
    const QByteArray data = var.data;
    RW_VAR first = cutAtBound(var, bound);
    if (!isBitType(var.elemType)) {
        const qint64 firstBytes = qMin<qint64>(qint64(first.count) * cacheEntrySize(var.elemType), data.size());
        first.data = data.left(int(firstBytes));
        var.data = data.mid(int(firstBytes));
        return first;
    }
    first.data = data.left(first.count / 8 + (first.count % 8 != 0 ? 1 : 0));
    var.data = first.count % 8 == 0 ? data.mid(first.count / 8) : bitsFrom(data, first.count, var.count);
    return first;
}

void appendWrite(QList<RW_VAR> &list, RW_VAR &var, int bound) {
    if (crossesBound(var, bound)) {
        list.append(cutWriteAtBound(var, bound));
    }
    list.append(var);
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

}  // namespace

void function_rw_var_add_read(QList<RW_VAR> &list, RW_VAR &var) {
    appendRead(list, var, listFunctionBound(var.elemType));
}

void function_rw_var_revise(QList<RW_VAR> &list, RW_VAR &var) {
    reviseLast(list, var, listFunctionBound(var.elemType));
}

void function_rw_var_add_write(QList<RW_VAR> &list, RW_VAR &var) {
    appendWrite(list, var, listFunctionBound(var.elemType));
}

void appendDriverRead(QList<RW_VAR> &list, RW_VAR &var) {
    appendRead(list, var, dravo::addressMapBound(var.elemType));
}

void reviseDriverRead(QList<RW_VAR> &list, RW_VAR &var) {
    reviseLast(list, var, dravo::addressMapBound(var.elemType));
}

void appendDriverWrite(QList<RW_VAR> &list, const RW_VAR &var) {
    const dravo::ElementType *type = dravo::findElementType(var.elemType);
    const int bound = dravo::addressMapBound(var.elemType);
    if (type && type->elementClass == dravo::WordPairClass) {
        if (var.address < bound && qint64(var.address) + 2 * qint64(var.count) > bound) {
            appendCutPairs(list, var, bound);
        } else {
            list.append(var);
        }
        return;
    }
    RW_VAR rest = var;
    if (crossesBound(rest, bound)) {
        RW_VAR first = cutWriteAtBound(rest, bound);
        if (isBitType(first.elemType) && first.count == 1) {
            // A single coil is switched on by any nonzero byte, and this one holds the neighbours' bits too.
            first.data = QByteArray(1, char(valueBit(first.data, 0)));
        }
        list.append(first);
    }
    list.append(rest);
}
