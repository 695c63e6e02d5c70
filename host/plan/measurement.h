// What each request of a plan really takes. Exchanges and times go in; no clock, no port. Any one thread.
#ifndef DRAVO_HOST_PLAN_MEASUREMENT_H
#define DRAVO_HOST_PLAN_MEASUREMENT_H

#include <QtCore/QHash>

#include "host/plan/pass_plan.h"

class Measurement {
public:
    /// plan: outlives this object.
    explicit Measurement(const PassPlan &plan);

    /// An event of the line and when it was told. A request is measured from the end of the one before it, where both
    /// were answered at the first try and nothing came in between. The first pass teaches the engine whether the
    /// adapter echoes, and does not count.
    void take(const dravo::LineEvent &event, qint64 nowUs);
    int passes() const { return passes_; }

    /// Puts the medians into the plan, and what became of requests whose last exchange was no good one.
    void fill(PassPlan *plan) const;

private:
    struct Times {
        QVector<qint64> us;
        bool wasAsked = false;
        QString failure;
    };
    void takeExchange(const dravo::LineEvent &exchange, qint64 nowUs);

    QVector<Times> times_;           // by request
    QHash<QByteArray, int> places_;  // by frame
    int passes_ = 0;
    qint64 lastEndUs_ = -1;  // of a good exchange; below 0: the next one is not measured
};

#endif  // DRAVO_HOST_PLAN_MEASUREMENT_H
