// How the requests went: retries, and failures by kind. Communication thread only.
#ifndef DRAVO_HOST_TAGS_REQUEST_STATISTICS_H
#define DRAVO_HOST_TAGS_REQUEST_STATISTICS_H

#include <QtCore/QString>

class RequestStatistics {
public:
    RequestStatistics() : retries_(0), noReply_(0), wrongLength_(0), rejected_(0), refused_(0) {}

    /// A reply was judged. exceptionCode: of the exception that it was, else 0.
    void judged(int code, int exceptionCode);

    bool anyFailed() const { return noReply_ + wrongLength_ + rejected_ + refused_ > 0; }
    /// The figures on one line.
    QString line() const;

private:
    qint64 retries_;
    qint64 noReply_;  // failed requests by kind
    qint64 wrongLength_;
    qint64 rejected_;
    qint64 refused_;
};

#endif  // DRAVO_HOST_TAGS_REQUEST_STATISTICS_H
