#include "host/trace/drop_counts.h"

DropCounts::Counts DropCounts::countsOf(const dravo::LineFigures &figures) {
    Counts counts;
    counts.echoes = figures.counts.echoes;
    counts.late = figures.counts.lateDropped;
    counts.foreign = figures.counts.foreignDropped;
    return counts;
}

void DropCounts::update(const dravo::LineStatistics &statistics) {
    const qint64 sum = countsOf(statistics.line()).sum();
    if (sum == sum_) {
        return;
    }
    if (sum < sum_) {
        seen_.clear();
        open_.clear();
    }
    sum_ = sum;
    for (const int station : statistics.stations()) {
        const Counts now = countsOf(statistics.forStation(station));
        const Counts before = seen_.value(station);
        Counts &open = open_[station];
        open.echoes += now.echoes - before.echoes;
        open.late += now.late - before.late;
        open.foreign += now.foreign - before.foreign;
        seen_.insert(station, now);
    }
}

DropCounts::Why DropCounts::take(int station, bool isCopy) {
    Counts &open = open_[station];
    const bool isNoFrame = open.late == 0 && open.foreign == 0;  // to the engine: a copy that came too late
    if (isCopy && (open.echoes > 0 || isNoFrame)) {
        open.echoes = qMax<qint64>(0, open.echoes - 1);
        return Echo;
    }
    const bool both = open.late > 0 && open.foreign > 0;
    const Why why = both ? LateOrForeign : open.late > 0 ? Late : Foreign;
    qint64 &taken = open.late > 0 ? open.late : open.foreign;
    taken = qMax<qint64>(0, taken - 1);
    return why;
}
