#include "host/statistics/run_statistics.h"

namespace {
constexpr int kLine = -1;
}

void RunStatistics::passDone(qint64 us, qint64 nowUs) {
    passes_.passDone(double(us) / 1000);
    inPassesUs_ += us;
    countValues(nowUs);
}

// A variable counts where all of it was read since the count before: in each pass once.
void RunStatistics::countValues(qint64 nowUs) {
    for (const dravo::Variable &variable : variables_) {
        const qint64 ageUs = line_.stateOf(variable, nowUs).ageUs;
        if (ageUs >= 0 && ageUs < nowUs - countedUs_) {
            values_[variable.station] += variable.count;
            values_[kLine] += variable.count;
        }
    }
    countedUs_ = nowUs;
}

RunStatistics::Amounts RunStatistics::amountsOf(int key) const {
    const dravo::LineStatistics &counted = line_.statistics();
    const dravo::LineFigures &figures = key == kLine ? counted.line() : counted.forStation(key);
    return {values_.value(key), figures.counts.busyUs};
}

void RunStatistics::markRecord(qint64 nowUs) {
    markedUs_ = nowUs;
    marked_.insert(kLine, amountsOf(kLine));
    for (const int station : line_.statistics().stations()) {
        marked_.insert(station, amountsOf(station));
    }
}

QVector<StatisticsRow> RunStatistics::rows(qint64 nowUs) {
    countValues(nowUs);
    QVector<StatisticsRow> rows;
    for (const int station : line_.statistics().stations()) {
        rows.append(row(station, nowUs));
    }
    rows.append(row(std::nullopt, nowUs));
    return rows;
}

StatisticsRow RunStatistics::row(std::optional<int> station, qint64 nowUs) const {
    const dravo::LineStatistics &counted = line_.statistics();
    const dravo::LineFigures &figures = station ? counted.forStation(*station) : counted.line();
    StatisticsRow row;
    row.station = station;
    row.counts = figures.counts;
    row.medianUs = figures.replyTimes.quantileUs(50);
    row.percent95Us = figures.replyTimes.quantileUs(95);
    row.percent99Us = figures.replyTimes.quantileUs(99);
    row.longestUs = figures.replyTimes.longestUs();
    const int key = station.value_or(kLine);
    const Amounts amounts = amountsOf(key);
    const Amounts before = marked_.value(key);
    row.whole = {nowUs - startUs_, amounts.values, amounts.busyUs};
    row.recent = {nowUs - markedUs_, amounts.values - before.values, amounts.busyUs - before.busyUs};
    if (station) {
        row.isDown = line_.isDown(*station);
    } else {
        row.passes = passes_;
        row.inPassesUs = inPassesUs_;
        row.requestsPerPass = line_.requestsPerPass();
        row.plannedPassUs = line_.plannedPassUs();
    }
    return row;
}
