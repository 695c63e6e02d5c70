#include "fuzz/driver_cuts.h"

#include <algorithm>
#include <climits>
#include <map>
#include <vector>

#include "fuzz/driver_frames.h"
#include "fuzz/driver_types.h"

namespace reference {

namespace {

bool crosses(const RW_VAR &var, int bound) {
    return var.address < bound && qint64(var.address) + var.count > bound;
}

QByteArray bitsFrom(const QByteArray &data, int first, int count) {
    QByteArray bits((count + 7) / 8, '\0');
    for (int i = 0; i < count; ++i) {
        if ((byteAt(data, (first + i) / 8) >> ((first + i) % 8) & 1) != 0) {
            bits[i / 8] = static_cast<char>(bits.at(i / 8) | 1 << (i % 8));
        }
    }
    return bits;
}

/// The variables by station and type, each group in the order of addresses.
std::map<int, std::map<int, std::vector<RW_VAR>>> grouped(const QList<ReadVarEntry> &entries, const ComInfo &settings) {
    std::map<int, std::map<int, std::vector<RW_VAR>>> groups;
    for (const ReadVarEntry &entry : entries) {
        RW_VAR var = RW_VAR();
        var.itemId = -1;
        var.remoteMode = settings.remoteMode;
        var.nodeId = settings.localNode;
        var.label = entry.label;
        var.addressText = entry.addressText;
        var.elemType = entry.elemType;
        var.address = elementAddress(entry.elemType, entry.addressText);
        var.station = stationInForce(settings, entry.station);
        var.count = entry.count;
        if (var.address >= 0 && var.station != 0 && var.count <= kMaxElementCount && normalise(var)) {
            groups[var.station][var.elemType].push_back(var);
        }
    }
    for (auto &station : groups) {
        for (auto &group : station.second) {
            std::stable_sort(group.second.begin(), group.second.end(),
                             [](const RW_VAR &left, const RW_VAR &right) { return left.address < right.address; });
        }
    }
    return groups;
}

void merge(QList<RW_VAR> &requests, const std::vector<RW_VAR> &group, qint64 limit) {
    const int type = group.front().elemType;
    const int before = requests.size();
    for (const RW_VAR &var : group) {
        RW_VAR whole = var;
        qint64 count = var.count;
        if (requests.size() > before && var.address < requests.last().address + limit) {
            const RW_VAR &tail = requests.last();
            count = qint64(var.address) + var.count - tail.address;
            if (count <= tail.count) {
                continue;
            }
            whole = tail;
            requests.removeLast();
        }
        for (const RW_VAR &piece : pieces(whole, count, limit)) {
            requests += readsOf(piece, bound(type));
        }
    }
}

/// Values of two registers each: one that lies across the bound goes out as two registers.
QList<RW_VAR> pairWrites(const RW_VAR &whole) {
    const int cut = bound(whole.elemType);
    if (whole.address >= cut || whole.address + 2 * qint64(whole.count) <= cut) {
        return {whole};
    }
    QList<RW_VAR> writes;
    RW_VAR part = whole;
    const auto take = [&](int values) {
        part.count = values;
        part.data = whole.data.mid((part.address - whole.address) / 2 * 4, values * 4);
        if (values > 0) {
            writes.append(part);
        }
        part.address += 2 * values;
    };
    take((cut - whole.address) / 2);
    if (part.address < cut) {
        const QByteArray across = whole.data.mid((part.address - whole.address) / 2 * 4, 4);
        RW_VAR half = part;
        half.elemType = wireType(whole.elemType);
        half.count = 1;
        half.data = across.mid(2);
        writes.append(half);
        ++half.address;
        half.data = across.left(2);
        writes.append(half);
        part.address += 2;
    }
    take(whole.count - (part.address - whole.address) / 2);
    return writes;
}

}  // namespace

qint64 frameLimit(int maxGroupLength, int type) {
    const qint64 limit = std::max(maxGroupLength, 1);
    return classOf(type) == Bit ? limit * 8 : limit;
}

int stationInForce(const ComInfo &settings, int ownStation) {
    return settings.useVarStation != 0 ? ownStation : settings.defaultStation;
}

QList<RW_VAR> pieces(const RW_VAR &whole, qint64 count, qint64 limit, int addressesEach) {
    QList<RW_VAR> cut;
    for (qint64 first = 0; first < count && whole.address + first * addressesEach <= INT_MAX; first += limit) {
        RW_VAR piece = whole;
        piece.address = int(whole.address + first * addressesEach);
        piece.count = int(std::min(limit, count - first));
        cut.append(piece);
    }
    return cut;
}

QList<RW_VAR> readsOf(RW_VAR var, int cut) {
    if (!crosses(var, cut)) {
        return {var};
    }
    RW_VAR first = var;
    first.count = cut - var.address;
    var.address = cut;
    var.count -= first.count;
    return {first, var};
}

QList<RW_VAR> writesOf(RW_VAR var, int cut) {
    QList<RW_VAR> writes = readsOf(var, cut);
    if (writes.size() == 1) {
        return writes;
    }
    const int firstCount = writes[0].count;
    if (classOf(var.elemType) != Bit) {
        const qint64 firstBytes = qint64(firstCount) * (classOf(var.elemType) == DoubleWord ? 4 : 2);
        writes[0].data = var.data.left(int(std::min<qint64>(firstBytes, var.data.size())));
        writes[1].data = var.data.mid(writes[0].data.size());
        return writes;
    }
    writes[0].data = var.data.left(firstCount / 8 + (firstCount % 8 != 0));
    writes[1].data = firstCount % 8 == 0
                         ? var.data.mid(firstCount / 8)
                         : bitsFrom(var.data, firstCount, std::min<int>(writes[1].count, kMaxElementCount));
    return writes;
}

QList<RW_VAR> cyclicReads(const QList<ReadVarEntry> &entries, const ComInfo &settings) {
    QList<RW_VAR> requests;
    for (const auto &station : grouped(entries, settings)) {
        for (const auto &group : station.second) {
            merge(requests, group.second, frameLimit(settings.maxGroupLength, group.first));
        }
    }
    return requests;
}

QList<RW_VAR> deviceWrites(const RW_VAR &whole, int maxGroupLength) {
    QList<RW_VAR> writes;
    const Class elementClass = classOf(whole.elemType);
    if (elementClass == Bit) {
        writes = writesOf(whole, bound(whole.elemType));
        if (writes.size() == 2 && writes[0].count == 1) {  // of a single coil all other bits are 0
            writes[0].data = bitsFrom(whole.data, 0, 1);
        }
        return writes;
    }
    const int bytesEach = elementClass == BitInWord ? 1 : elementClass == Word ? 2 : 4;
    const int addressesEach = elementClass == Pair ? 2 : 1;
    const qint64 limit = elementClass == BitInWord ? 1 : frameLimit(maxGroupLength, whole.elemType);
    int at = 0;
    for (RW_VAR piece : pieces(whole, whole.count, limit, addressesEach)) {
        piece.data = whole.data.mid(at, piece.count * bytesEach);
        at += piece.count * bytesEach;
        writes += elementClass == Pair ? pairWrites(piece) : writesOf(piece, bound(whole.elemType));
    }
    return writes;
}

}  // namespace reference
