// What the monitor knows and shows, whichever way it shows it. Communication thread only.
#ifndef DRAVO_HOST_MONITOR_MODEL_H
#define DRAVO_HOST_MONITOR_MODEL_H

#include <QtCore/QElapsedTimer>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include "host/pass_statistics.h"
#include "host/value_states.h"

/// One variable as it is shown.
struct ValueLine {
    ValueState state;
    QStringList values;  // "-" where never read
    QString meaning;     // of a failing variable's code, else empty
};

class MonitorModel {
public:
    MonitorModel(const QVector<Variable> &variables, int requestsPerPass, const SerialLink &link);

    void judged(const Exchange &exchange);
    void passDone(double milliseconds) { statistics_.passDone(milliseconds); }

    const QVector<Variable> &variables() const { return variables_; }
    const PassStatistics &statistics() const { return statistics_; }
    QStringList statisticsLines() const { return statistics_.lines(link_); }
    qint64 nowMs() const { return clock_.elapsed(); }
    ValueLine valueLine(const Variable &variable) const;

private:
    QVector<Variable> variables_;
    const SerialLink &link_;
    PassStatistics statistics_;
    ValueStates states_;
    QElapsedTimer clock_;
};

/// The text on one line of a terminal: control characters, line ends among them, become blanks.
QString printable(const QString &text);

#endif  // DRAVO_HOST_MONITOR_MODEL_H
