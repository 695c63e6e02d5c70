// What the line's events tell beyond the last state of each variable: which request failed, when a station was heard
// last, how busy the line is. Times come in, there is no clock. Communication thread.
#ifndef DRAVO_HOST_SCREEN_LINE_NEWS_H
#define DRAVO_HOST_SCREEN_LINE_NEWS_H

#include <QtCore/QMap>

#include "korvel_dravo_line.h"

class LineNews {
public:
    explicit LineNews(qint64 nowUs) : startUs_(nowUs) {}

    /// Every event in the order told.
    void take(const dravo::LineEvent &event, qint64 nowUs);

    /// How long the station has not answered, since the start if it never has.
    qint64 quietUs(int station, qint64 nowUs) const { return nowUs - answeredAtUs_.value(station, startUs_); }
    /// What the request that failed the variable asked for besides or instead: "in one request with 100 to 124, ".
    /// Empty where it asked for just the variable, or where no request is known.
    QString sharedRequest(const dravo::Variable &variable, const dravo::ValueState &state) const;

private:
    struct Failed {
        int count;
        int code;
        int exceptionCode;
    };
    using ByAddress = QMap<int, Failed>;  // they do not overlap

    static qint64 groupOf(const dravo::Elements &elements);

    qint64 startUs_;
    QMap<int, qint64> answeredAtUs_;    // by station
    QMap<qint64, ByAddress> failures_;  // of station and element type
};

#endif  // DRAVO_HOST_SCREEN_LINE_NEWS_H
