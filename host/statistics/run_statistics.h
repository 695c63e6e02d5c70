// What a run has done so far, for the line and for each station: what the engine counts, and the values that arrived.
// Times come in, there is no clock. Communication thread only.
#ifndef DRAVO_HOST_STATISTICS_RUN_STATISTICS_H
#define DRAVO_HOST_STATISTICS_RUN_STATISTICS_H

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QVector>
#include <optional>

#include "host/screen/pass_statistics.h"
#include "korvel_dravo_line.h"

/// Values and busy time within a stretch of time.
struct StatisticsShare {
    qint64 us = 0;
    qint64 values = 0;
    qint64 busyUs = 0;

    double valuesPerSecond() const { return us > 0 ? double(values) * 1e6 / double(us) : 0; }
    /// 0 to 100.
    double busyPercent() const { return us > 0 ? qMin(100.0, double(busyUs) * 100 / double(us)) : 0; }
};

struct StatisticsRow {
    std::optional<int> station;  // none: the line
    bool isDown = false;
    dravo::LineCounts counts;
    qint64 medianUs = 0;  // of the times to the replies, these four
    qint64 percent95Us = 0;
    qint64 percent99Us = 0;
    qint64 longestUs = 0;
    StatisticsShare whole;   // since the start
    StatisticsShare recent;  // since the last markRecord()
    PassStatistics passes;   // the line's, and so the next
    qint64 inPassesUs = 0;   // of the whole
    int requestsPerPass = 0;
    qint64 plannedPassUs = 0;

    /// How close the line is to its limit: at 100 one pass follows the other.
    double passPercent() const { return whole.us > 0 ? qMin(100.0, double(inPassesUs) * 100 / double(whole.us)) : 0; }
};

class RunStatistics {
public:
    /// variables: those that the line watches. The line outlives this object.
    RunStatistics(const QVector<dravo::Variable> &variables, const dravo::Line &line, qint64 nowUs)
        : variables_(variables), line_(line), startUs_(nowUs), countedUs_(nowUs), markedUs_(nowUs) {}

    /// A pass has ended and its event is being served.
    void passDone(qint64 us, qint64 nowUs);
    /// From here on counts what is recent.
    void markRecord(qint64 nowUs);

    /// The stations, ascending, then the line.
    QVector<StatisticsRow> rows(qint64 nowUs);

private:
    struct Amounts {
        qint64 values = 0;
        qint64 busyUs = 0;
    };
    void countValues(qint64 nowUs);
    StatisticsRow row(std::optional<int> station, qint64 nowUs) const;
    Amounts amountsOf(int key) const;

    QVector<dravo::Variable> variables_;
    const dravo::Line &line_;
    qint64 startUs_;
    qint64 countedUs_;  // what was read before has been counted
    qint64 markedUs_;
    PassStatistics passes_;
    qint64 inPassesUs_ = 0;
    QHash<int, qint64> values_;  // by station, the line's below 0, and so the next
    QHash<int, Amounts> marked_;
};

#endif  // DRAVO_HOST_STATISTICS_RUN_STATISTICS_H
