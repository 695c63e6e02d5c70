#include "host/tags/request_statistics.h"

#include "host/tags/result_text.h"

void RequestStatistics::judged(int code, int exceptionCode) {
    const Outcome outcome = outcomeOf(code);
    if (outcome == Outcome::Good) {
        return;
    }
    if (outcome == Outcome::Retry) {
        ++retries_;
    } else if (exceptionCode != 0) {
        ++refused_;
    } else if (outcome == Outcome::NoReply) {
        ++noReply_;
    } else if (outcome == Outcome::WrongLength) {
        ++wrongLength_;
    } else {
        ++rejected_;
    }
}

QString RequestStatistics::line() const {
    return QString::fromLatin1("retries %1   failed requests: no reply %2  wrong length %3  rejected %4  exception %5")
        .arg(retries_)
        .arg(noReply_)
        .arg(wrongLength_)
        .arg(rejected_)
        .arg(refused_);
}
