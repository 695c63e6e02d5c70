// How long the passes over the variables take. Any one thread.
#ifndef DRAVO_HOST_SCREEN_PASS_STATISTICS_H
#define DRAVO_HOST_SCREEN_PASS_STATISTICS_H

#include <QtCore/QVector>

class PassStatistics {
public:
    void passDone(double milliseconds);

    qint64 passes() const { return passes_; }
    /// 0 before the first.
    double shortestMs() const { return shortestMs_; }
    double longestMs() const { return longestMs_; }
    double lastMs() const { return lastMs_; }
    /// Of the last 1000 passes; 0 before the first.
    double medianMs() const;

private:
    qint64 passes_ = 0;
    QVector<double> recentMs_;  // a ring of the last passes
    double lastMs_ = 0;
    double shortestMs_ = 0;
    double longestMs_ = 0;
};

#endif  // DRAVO_HOST_SCREEN_PASS_STATISTICS_H
