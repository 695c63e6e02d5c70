// What the monitor knows and shows, whichever way it shows it. Times come in, there is no clock. Communication thread
// only.
#ifndef DRAVO_HOST_SCREEN_MONITOR_MODEL_H
#define DRAVO_HOST_SCREEN_MONITOR_MODEL_H

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include "host/screen/columns.h"
#include "host/screen/pass_statistics.h"
#include "host/tags/request_statistics.h"

class MonitorModel {
public:
    /// variables: usable ones.
    MonitorModel(const QVector<Variable> &variables, int requestsPerPass)
        : variables_(variables), passes_(requestsPerPass) {}

    /// A request was judged, over for good or to be sent again.
    void judged(int code, int exceptionCode) { requests_.judged(code, exceptionCode); }
    /// A cyclic request over range is over.
    void finished(const ElementRange &range, int code, int exceptionCode, qint64 nowMs) {
        states_.finished(range, code, exceptionCode, nowMs);
    }
    void passDone(double milliseconds) { passes_.passDone(milliseconds); }
    /// What has gone over the line so far.
    void setBytes(qint64 out, qint64 in) {
        bytesOut_ = out;
        bytesIn_ = in;
    }

    const QVector<Variable> &variables() const { return variables_; }
    qint64 passes() const { return passes_.passes(); }
    bool anyFailed() const { return requests_.anyFailed(); }
    QStringList statisticsLines() const;
    /// A variable with the driver's last known values.
    ShownVariable shown(const Variable &variable, qint64 nowMs) const;

private:
    QVector<Variable> variables_;
    PassStatistics passes_;
    RequestStatistics requests_;
    ValueStates states_;
    qint64 bytesOut_ = 0;
    qint64 bytesIn_ = 0;
};

#endif  // DRAVO_HOST_SCREEN_MONITOR_MODEL_H
