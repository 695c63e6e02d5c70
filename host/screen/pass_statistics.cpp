#include "host/screen/pass_statistics.h"

#include <algorithm>

namespace {
constexpr int kRecentPasses = 1000;
}

void PassStatistics::passDone(double milliseconds) {
    lastMs_ = milliseconds;
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
