#include "host/pass_statistics.h"

#include <algorithm>

#include "host/result_text.h"

namespace {
constexpr int kRecentPasses = 1000;
}

void PassStatistics::judged(const Exchange &exchange) {
    const Outcome outcome = outcomeOf(exchange.code);
    if (outcome == Outcome::Good) {
        return;
    }
    if (outcome == Outcome::Retry) {
        ++retries_;
    } else if (exchange.exceptionCode != 0) {
        ++refused_;
    } else if (outcome == Outcome::NoReply) {
        ++noReply_;
    } else if (outcome == Outcome::WrongLength) {
        ++wrongLength_;
    } else {
        ++rejected_;
    }
}

void PassStatistics::passDone(double milliseconds) {
    shortestMs_ = passes_ == 0 ? milliseconds : std::min(shortestMs_, milliseconds);
    longestMs_ = std::max(longestMs_, milliseconds);
    if (recentMs_.size() < kRecentPasses) {
        recentMs_.append(milliseconds);
    } else {
        recentMs_[int(passes_ % kRecentPasses)] = milliseconds;
    }
    ++passes_;
}

double PassStatistics::medianMs() const {
    if (recentMs_.isEmpty()) {
        return 0;
    }
    QVector<double> sorted = recentMs_;
    const auto middle = sorted.begin() + sorted.size() / 2;
    std::nth_element(sorted.begin(), middle, sorted.end());
    return *middle;
}

QStringList PassStatistics::lines(const SerialLink &link) const {
    return {
        QStringLiteral("passes %1   requests per pass %2   ms per pass: min %3  median %4  max %5")
            .arg(passes_)
            .arg(requestsPerPass_)
            .arg(shortestMs_, 0, 'f', 1)
            .arg(medianMs(), 0, 'f', 1)
            .arg(longestMs_, 0, 'f', 1),
        QStringLiteral("retries %1   failed requests: no reply %2  wrong length %3  rejected %4  exception %5")
            .arg(retries_)
            .arg(noReply_)
            .arg(wrongLength_)
            .arg(rejected_)
            .arg(refused_),
        QStringLiteral("bytes out %1   bytes in %2").arg(link.bytesOut()).arg(link.bytesIn()),
    };
}
