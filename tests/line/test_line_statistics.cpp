#include "korvel_dravo_statistics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <vector>

using namespace dravo;

namespace {

TEST(ReplyTimes, QuantilesAreAtMostASixteenthTooLong) {
    std::mt19937_64 random(1);
    const std::function<qint64()> distributions[] = {
        [&] { return qint64(random() % 40); },
        [&] { return qint64(random() % 1000000); },
        [&] { return qint64(std::exp(double(random() % 22000) / 1000)); },
        [&] { return random() % 100 == 0 ? qint64(900000) : qint64(20000 + random() % 100); },
        [&] { return qint64(1) << (random() % 32); },
        [] { return qint64(5000); },
    };
    for (const auto &next : distributions) {
        for (const int size : {1, 2, 3, 99, 100, 101, 5000}) {
            ReplyTimes times;
            std::vector<qint64> sorted;
            while (int(sorted.size()) < size) {
                sorted.push_back(next());
                times.add(sorted.back());
            }
            std::sort(sorted.begin(), sorted.end());
            EXPECT_EQ(times.longestUs(), sorted.back());
            for (int percent = 1; percent <= 100; ++percent) {
                const qint64 exact = sorted[size_t((size * percent + 99) / 100 - 1)];
                ASSERT_GE(times.quantileUs(percent), exact) << percent << " of " << size;
                ASSERT_LE(times.quantileUs(percent), exact + exact / 16) << percent << " of " << size;
            }
        }
    }
}

TEST(ReplyTimes, BothEndsAndTenMillionTimes) {
    ReplyTimes times;
    EXPECT_EQ(times.quantileUs(50), 0);
    const qint64 hour = 3600000000;
    times.add(-5);
    times.add(0);
    EXPECT_EQ(times.inBucket(0), 2);
    EXPECT_EQ(times.quantileUs(1000), 0);
    times.add(hour - 120000000);
    times.add(hour);
    times.add(std::numeric_limits<qint64>::max());
    EXPECT_EQ(times.inBucket(ReplyTimes::kBuckets - 2), 1);
    EXPECT_EQ(times.inBucket(ReplyTimes::kBuckets - 1), 2);
    EXPECT_EQ(times.quantileUs(100), std::numeric_limits<qint64>::max());
    EXPECT_EQ(times.quantileUs(-1), 0);

    ReplyTimes many;
    for (int i = 0; i < 10000000; ++i) {
        many.add(i);
    }
    qint64 inBuckets = 0;
    for (int bucket = 0; bucket < ReplyTimes::kBuckets; ++bucket) {
        const qint64 width = ReplyTimes::bucketStartUs(bucket + 1) - ReplyTimes::bucketStartUs(bucket);
        ASSERT_TRUE(width == 1 || width * 16 <= ReplyTimes::bucketStartUs(bucket)) << bucket;
        inBuckets += many.inBucket(bucket);
    }
    EXPECT_EQ(inBuckets, 10000000);
    EXPECT_EQ(many.inBucket(320), 524288);  // 8,388,608 us to 8,912,895 us
    EXPECT_LT(sizeof many, 4096u);
}

TEST(LineStatistics, CountsForTheLineAndForEachStation) {
    LineStatistics statistics;
    statistics.sent(3, 8, 9000, false);
    statistics.sent(3, 8, 9000, true);
    statistics.sent(4, 11, 12000, false);
    statistics.received(3, 9, 10000);
    statistics.received(-1, 2, 2000);
    statistics.answered(3, 20000);
    statistics.failed(4, LineCounts::Damaged);
    statistics.exceptionReceived(4, 2);
    for (const int code : {0, 12, 255, -1}) {
        statistics.exceptionReceived(256, code);
    }
    statistics.lateDropped(3);
    statistics.foreignDropped(9);
    statistics.echoReceived(4);
    statistics.waited(4, 600000);
    statistics.waited(4, 1);

    EXPECT_EQ(statistics.stations(), (QList<int>{3, 4, 9}));
    const LineCounts &three = statistics.forStation(3).counts;
    EXPECT_EQ((std::vector<qint64>{three.sendings, three.retries, three.answered, three.lateDropped, three.echoes,
                                   three.waits, three.waitedUs, three.bytesOut, three.bytesIn, three.busyUs}),
              (std::vector<qint64>{2, 1, 1, 1, 0, 0, 0, 16, 9, 28000}));
    EXPECT_EQ(statistics.forStation(3).replyTimes.longestUs(), 20000);
    const LineCounts &four = statistics.forStation(4).counts;
    EXPECT_EQ((std::vector<qint64>{four.failures[LineCounts::Damaged], four.failures[LineCounts::NoAnswer],
                                   four.exceptions[2], four.echoes, four.waits, four.waitedUs}),
              (std::vector<qint64>{1, 0, 1, 1, 2, 600001}));
    const LineCounts &line = statistics.line().counts;
    EXPECT_EQ((std::vector<qint64>{line.sendings, line.exceptions[0], line.foreignDropped, line.bytesIn, line.busyUs}),
              (std::vector<qint64>{3, 4, 1, 11, 42000}));
    EXPECT_EQ(statistics.forStation(5).counts.sendings, 0);
    EXPECT_EQ(line.busyPerMille(168000), 250);
    EXPECT_EQ(line.busyPerMille(0), 0);
    EXPECT_EQ(line.busyPerMille(1), 1000);
}

}  // namespace
