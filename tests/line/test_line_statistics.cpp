#include "korvel_dravo_statistics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace dravo;

namespace {

TEST(ReplyTimes, QuantilesAndHistogramOfASortedVector) {
    std::mt19937_64 random(1);
    const qint64 open = ReplyTimes::bucketStartUs(ReplyTimes::kBuckets - 1);
    for (const int size : {1, 1, 1, 1, 1, 1, 2, 3, 99, 100, 101, 5000}) {
        ReplyTimes times;
        std::vector<qint64> sorted;
        while (int(sorted.size()) < size) {
            const qint64 us = qint64(random() >> random() % 64);  // of any size, below 0 too
            sorted.push_back(qMax<qint64>(us, 0));
            times.add(us);
        }
        std::sort(sorted.begin(), sorted.end());
        for (int percent = -1; percent <= 102; ++percent) {
            const qint64 exact = sorted[size_t((size * qBound(1, percent, 100) + 99) / 100 - 1)];
            const qint64 most = exact < open ? qMin(exact + exact / 16, sorted.back()) : sorted.back();
            const qint64 told = times.quantileUs(percent);
            ASSERT_TRUE(told >= exact && told <= most) << told << " is the " << percent << " of " << size;
        }
        qint64 before = 0;
        for (int bucket = 0; bucket < ReplyTimes::kBuckets; ++bucket) {
            const auto start = std::lower_bound(sorted.begin(), sorted.end(), ReplyTimes::bucketStartUs(bucket));
            ASSERT_EQ(before, start - sorted.begin()) << bucket;
            before += times.inBucket(bucket);
        }
        ASSERT_EQ(before, size);
    }
}

TEST(LineStatistics, CountsForTheLineAndForEachStation) {
    LineStatistics statistics;
    statistics.sent(3, 8, 9000, false);
    statistics.received(-1, 2, 2000);
    for (const int code : {2, 0, 12, 255, -1}) {
        statistics.exceptionReceived(256, code);
    }
    EXPECT_EQ(statistics.stations(), (QList<int>{3}));
    EXPECT_EQ(statistics.forStation(3).counts.busyUs, 9000);
    const LineCounts line = statistics.line().counts;
    EXPECT_EQ((QList<qint64>{line.retries, line.exceptions[0], line.busyPerMille(44000), line.busyPerMille(1)}),
              (QList<qint64>{0, 4, 250, 1000}));
}

}  // namespace
