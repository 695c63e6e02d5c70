// What the monitor knows and shows, whichever way it shows it. Times come in, there is no clock. Communication thread
// only.
#ifndef DRAVO_HOST_SCREEN_MONITOR_MODEL_H
#define DRAVO_HOST_SCREEN_MONITOR_MODEL_H

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include "host/screen/columns.h"
#include "host/screen/line_load.h"
#include "host/screen/line_news.h"
#include "host/screen/pass_statistics.h"

class MonitorModel {
public:
    /// variables: those that the line watches. The line outlives the model.
    MonitorModel(const QVector<Tag> &variables, const dravo::Line &line, qint64 nowUs)
        : variables_(variables), line_(line), news_(nowUs), load_(nowUs) {}

    /// Every event of the line.
    void take(const dravo::LineEvent &event, qint64 nowUs);
    /// While the device is lost no value is fresh.
    void setLost(bool lost);

    const QVector<Tag> &variables() const { return variables_; }
    qint64 passes() const { return passes_.passes(); }
    bool isLost() const { return lost_; }
    /// Whether a request failed or the device was lost.
    bool anyFailed() const;
    double lastPassMs() const { return passes_.lastMs(); }
    /// How busy the line is now, 0 to 1000.
    int linePerMille(qint64 nowUs) const;
    /// Stations of the variables that do not answer and are asked only now and then.
    QVector<int> stationsDown() const;
    /// A variable with the last known values.
    ShownVariable shown(const Tag &variable, qint64 nowUs) const;

private:
    QString meaningOf(const dravo::ValueState &state, const dravo::Variable &variable, qint64 nowUs) const;

    QVector<Tag> variables_;
    const dravo::Line &line_;
    PassStatistics passes_;
    LineNews news_;
    LineLoad load_;
    bool lost_ = false;
    bool everLost_ = false;
};

#endif  // DRAVO_HOST_SCREEN_MONITOR_MODEL_H
