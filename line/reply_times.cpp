#include "korvel_dravo_statistics.h"

#include <algorithm>

namespace dravo {

namespace {

const qint64 kBucketsPerOctave = 16;

// Times below 16 have a bucket each; above, each doubling of the time is cut into 16.
int bucketOf(qint64 us) {
    int octave = 0;
    while ((us >> octave) >= 2 * kBucketsPerOctave) {
        ++octave;
    }
    const qint64 bucket = octave * kBucketsPerOctave + (us >> octave);
    return int(qMin<qint64>(bucket, ReplyTimes::kBuckets - 1));
}

}  // namespace

ReplyTimes::ReplyTimes() : count_(0), longestUs_(0) {
    std::fill(buckets_, buckets_ + kBuckets, 0);
}

void ReplyTimes::add(qint64 us) {
    const qint64 time = qMax<qint64>(us, 0);
    ++count_;
    ++buckets_[bucketOf(time)];
    longestUs_ = qMax(longestUs_, time);
}

qint64 ReplyTimes::quantileUs(int percent) const {
    const qint64 rank = (count_ * qBound(1, percent, 100) + 99) / 100;
    qint64 seen = 0;
    for (int bucket = 0; bucket < kBuckets - 1; ++bucket) {
        seen += buckets_[bucket];
        if (seen >= rank) {
            return qMin(bucketStartUs(bucket + 1) - 1, longestUs_);
        }
    }
    return longestUs_;
}

qint64 ReplyTimes::bucketStartUs(int bucket) {
    const qint64 octave = qMax<qint64>(bucket / kBucketsPerOctave - 1, 0);
    return (bucket - octave * kBucketsPerOctave) << octave;
}

}  // namespace dravo
