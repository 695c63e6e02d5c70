// What the closing lines say: passes and their time, retries, failures by kind. Communication thread only.
#ifndef DRAVO_HOST_PASS_STATISTICS_H
#define DRAVO_HOST_PASS_STATISTICS_H

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include "host/driver_session.h"

class PassStatistics {
public:
    explicit PassStatistics(int requestsPerPass) : requestsPerPass_(requestsPerPass) {}

    void judged(const Exchange &exchange);
    void passDone(double milliseconds);

    qint64 passes() const { return passes_; }
    bool anyFailed() const { return noReply_ + wrongLength_ + rejected_ + refused_ > 0; }
    /// Of the last 1000 passes; 0 before the first.
    double medianMs() const;

    /// The figures in words, a line each.
    QStringList lines(const SerialLink &link) const;

private:
    int requestsPerPass_;
    qint64 passes_ = 0;
    QVector<double> recentMs_;  // a ring of the last passes
    double shortestMs_ = 0;
    double longestMs_ = 0;
    qint64 retries_ = 0;
    qint64 noReply_ = 0;  // failed requests by kind
    qint64 wrongLength_ = 0;
    qint64 rejected_ = 0;
    qint64 refused_ = 0;
};

#endif  // DRAVO_HOST_PASS_STATISTICS_H
