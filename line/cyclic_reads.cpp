#include "line/cyclic_reads.h"

#include <limits>
#include "korvel_dravo_elements.h"
#include "line/variable.h"

namespace dravo {

namespace {

const int kRequestCharacters = 8;
const int kRemoteRequestCharacters = 22;

// Illegal data address, illegal data value.
bool teaches(int exceptionCode) {
    return exceptionCode == 2 || exceptionCode == 3;
}

}  // namespace

CyclicReads::CyclicReads(const LineSettings &settings, DriverPort &port)
    : settings_(settings), port_(port), walls_(settings.refusedRetryUs), plannedUs_(0), isNew_(false) {}

ReadGroup CyclicReads::groupOf(const Elements &elements) {
    const ReadGroup group = {elements.station, elements.elemType};
    return group;
}

WantedRange CyclicReads::wantedOf(const Variable &variable) {
    const ElementType *type = findElementType(variable.elemType);
    const int unit = type && type->elementClass == WordPairClass ? 2 : 1;
    const WantedRange range = {variable.elements.address, variable.elements.count, unit};
    return range;
}

void CyclicReads::watch(const QVector<Variable> &variables) {
    variables_ = variables;
    QMap<ReadGroup, QVector<WantedRange>> ranges;
    for (int i = 0; i < variables.size(); ++i) {
        ranges[groupOf(variables.at(i).elements)].append(wantedOf(variables.at(i)));
    }
    wanted_.clear();
    badlyMerged_.clear();
    QMap<ReadGroup, QVector<WantedRange>>::const_iterator it = ranges.constBegin();
    for (; it != ranges.constEnd(); ++it) {
        wanted_.insert(it.key(), WantedElements(it.value(), readLimits(it.key().elemType, settings_.frameLimit)));
    }
    walls_.wantedChanged(wanted_);
    isNew_ = true;
}

QString CyclicReads::finished(const LineEvent &exchange, qint64 nowUs) {
    const ReadGroup group = {exchange.station, exchange.elemType};
    const ElementRange range = {exchange.address, exchange.count};
    if (exchange.failure == LineEvent::None) {
        isNew_ = walls_.answered(group, range) || isNew_;
        return QString();
    }
    if (exchange.failure != LineEvent::Refused || !teaches(exchange.exceptionCode)) {
        return QString();
    }
    const Lesson lesson = walls_.refused(group, range, wanted_.value(group), nowUs);
    isNew_ = isNew_ || lesson.learnt != NothingNew;
    return lesson.text(group);
}

// The driver's own merge knows no walls.
bool CyclicReads::isPlannedHere(const ReadGroup &group) const {
    const Refusals refusals = walls_.of(group);
    return settings_.merge == MergeByTime || !refusals.walls.isEmpty() || !refusals.refused.isEmpty() ||
           badlyMerged_.contains(group);
}

// The driver's merge cuts at its frame limit, be it within a 32-bit value, whose halves would then be read at different
// times, and counts elements of two registers as one.
bool CyclicReads::findBadlyMerged(const QList<RW_VAR> &requests) {
    const int known = badlyMerged_.size();
    for (int i = 0; i < requests.size(); ++i) {
        const RW_VAR &request = requests.at(i);
        const ReadGroup group = groupOf(elementsOf(request));
        const QMap<ReadGroup, WantedElements>::const_iterator wanted = wanted_.constFind(group);
        const qint64 last = qint64(request.address) + request.count - 1;
        if (wanted != wanted_.constEnd() && !isPlannedHere(group) &&
            (request.count > wanted.value().limits().elementsPerRead ||
             wanted.value().isPair(int(qMin<qint64>(last, wanted.value().end()))))) {
            badlyMerged_.insert(group, true);
        }
    }
    return badlyMerged_.size() > known;
}

bool CyclicReads::update() {
    if (!isNew_) {
        return false;
    }
    isNew_ = false;
    requests_ = makeList();
    if (findBadlyMerged(requests_)) {
        requests_ = makeList();
    }
    plannedUs_ = workOutPlannedUs();
    return true;
}

QList<RW_VAR> CyclicReads::makeList() {
    QList<ReadVarEntry> merged;
    for (int i = 0; i < variables_.size(); ++i) {
        const Variable &variable = variables_.at(i);
        if (!isPlannedHere(groupOf(variable.elements))) {
            ReadVarEntry entry = ReadVarEntry();
            entry.elemType = uchar(variable.elemType);
            entry.station = uchar(variable.station);
            entry.addressText = variable.addressText;
            entry.label = variable.label;
            entry.count = variable.driverCount;
            merged.append(entry);
        }
    }
    QList<RW_VAR> planned;
    QMap<ReadGroup, WantedElements>::const_iterator it = wanted_.constBegin();
    for (; it != wanted_.constEnd(); ++it) {
        if (isPlannedHere(it.key())) {
            const QVector<ElementRange> reads = planReads(it.value(), cost(), walls_.of(it.key()));
            for (int i = 0; i < reads.size(); ++i) {
                planned.append(record(it.key(), reads.at(i)));
            }
        }
    }
    return port_.setCyclicReads(&merged, planned);
}

QList<Elements> CyclicReads::tornBy(const Elements &read) const {
    QList<Elements> torn;
    const QMap<ReadGroup, WantedElements>::const_iterator wanted = wanted_.constFind(groupOf(read));
    const int edges[] = {read.address - 1, read.address + read.count - 1};
    for (int i = 0; i < 2 && wanted != wanted_.constEnd(); ++i) {
        if (wanted.value().isPair(edges[i])) {
            const Elements pair = {read.station, read.elemType, edges[i], 2};
            torn.append(pair);
        }
    }
    return torn;
}

bool CyclicReads::probeOf(int station, RW_VAR *read) const {
    int shortest = std::numeric_limits<int>::max();
    for (int i = 0; i < requests_.size(); ++i) {
        const RW_VAR &request = requests_.at(i);
        if (request.station == station && request.count < shortest) {
            shortest = request.count;
            *read = request;
        }
    }
    ReadGroup group = {0, 0};
    ElementRange range = {0, 0};
    if (shortest == std::numeric_limits<int>::max() && walls_.anyRefused(station, &group, &range)) {
        shortest = range.count;
        *read = record(group, range);
    }
    return shortest < std::numeric_limits<int>::max();
}

RW_VAR CyclicReads::record(const ReadGroup &group, const ElementRange &range) const {
    RW_VAR read = port_.ownRecord();
    read.itemId = kCyclicItemId;
    read.station = group.station;
    read.elemType = group.elemType;
    read.address = range.first;
    read.count = range.count;
    return read;
}

void CyclicReads::retryRefused(qint64 nowUs) {
    ReadGroup group = {0, 0};
    ElementRange range = {0, 0};
    if (walls_.takeDueRetry(nowUs, &group, &range)) {
        port_.readAgain(record(group, range));
    }
}

bool CyclicReads::isRefused(const Variable &variable) const {
    return walls_.isRefused(groupOf(variable.elements), wantedOf(variable));
}

ReadCost CyclicReads::cost() const {
    const LineCost line = {settings_.baud, settings_.bitsPerCharacter,
                           port_.remote() ? kRemoteRequestCharacters : kRequestCharacters, settings_.replyDelayUs};
    return ReadCost(line);
}

qint64 CyclicReads::workOutPlannedUs() const {
    const ReadCost each = cost();
    qint64 us = 0;
    for (int i = 0; i < requests_.size(); ++i) {
        const RW_VAR &request = requests_.at(i);
        us += each.us(readLimits(request.elemType, settings_.frameLimit).dataBytes(request.count));
    }
    return us;
}

}  // namespace dravo
