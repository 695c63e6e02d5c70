// How long answers took, in fixed memory: a histogram whose buckets are at most a sixteenth of their times wide.
#ifndef DRAVO_LINE_REPLY_TIMES_H
#define DRAVO_LINE_REPLY_TIMES_H

#include <QtCore/QtGlobal>

namespace dravo {

/// Times in microseconds; one below 0 counts as 0. The last bucket begins before an hour and has no end.
class ReplyTimes {
public:
    ReplyTimes();

    void add(qint64 us);
    qint64 count() const { return count_; }
    /// Exact; 0 before the first.
    qint64 longestUs() const { return longestUs_; }
    /// The time that percent of the answers did not exceed (nearest rank): never too short, at most a sixteenth too
    /// long, and in the last bucket the longest. 50 is the median.
    /// @param percent  1 to 100; beyond counts as the nearest. @return 0 before the first answer.
    qint64 quantileUs(int percent) const;

    /// The histogram: bucket i holds the times from bucketStartUs(i) to bucketStartUs(i + 1) - 1. i is 0 to kBuckets
    /// - 1.
    enum { kBuckets = 459 };
    qint64 inBucket(int bucket) const { return buckets_[bucket]; }
    static qint64 bucketStartUs(int bucket);

private:
    qint64 count_;
    qint64 longestUs_;
    qint64 buckets_[kBuckets];
};

}  // namespace dravo

#endif  // DRAVO_LINE_REPLY_TIMES_H
