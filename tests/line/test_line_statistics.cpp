#include "korvel_dravo_statistics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace dravo;

namespace {

TEST(ReplyTimes, QuantilesAndHistogramOfASortedVector) {
    std::mt19937_64 random(1);
    const qint64 open = ReplyTimes::bucketStartUs(ReplyTimes::kBuckets - 1);
    EXPECT_LT(open, 3600000000);
    EXPECT_EQ(ReplyTimes().quantileUs(50), 0);
    for (const int size : {1, 2, 99, 100, 101, 5000}) {
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
            ASSERT_GE(times.quantileUs(percent), exact) << percent << " of " << size;
            ASSERT_LE(times.quantileUs(percent), most) << percent << " of " << size;
        }
        qint64 before = 0;
        for (int bucket = 0; bucket < ReplyTimes::kBuckets; ++bucket) {
            const auto start = std::lower_bound(sorted.begin(), sorted.end(), ReplyTimes::bucketStartUs(bucket));
            ASSERT_EQ(before, start - sorted.begin()) << bucket;
            before += times.inBucket(bucket);
        }
    }
}

TEST(LineStatistics, CountsForTheLineAndForEachStation) {
    LineStatistics statistics;
    statistics.sent(3, 8, 9000, false);
    statistics.sent(3, 8, 9000, true);
    statistics.received(3, 9, 10000);
    statistics.received(-1, 2, 2000);
    for (const int code : {2, 0, 12, 255, -1}) {
        statistics.exceptionReceived(256, code);
    }
    EXPECT_EQ(statistics.stations(), (QList<int>{3}));
    const LineCounts three = statistics.forStation(3).counts;
    EXPECT_EQ((QList<qint64>{three.retries, three.bytesIn, three.busyUs}), (QList<qint64>{1, 9, 28000}));
    const LineCounts line = statistics.line().counts;
    EXPECT_EQ((QList<qint64>{line.exceptions[0], line.exceptions[2], line.bytesOut, line.busyUs}),
              (QList<qint64>{4, 1, 16, 30000}));
    EXPECT_EQ((QList<int>{line.busyPerMille(120000), line.busyPerMille(1)}), (QList<int>{250, 1000}));
}

}  // namespace
