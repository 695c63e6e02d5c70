#include "line/wanted_elements.h"

namespace dravo {

namespace {

struct Span {
    int from;
    int to;
};

// The part that has addresses on the wire.
Span spanOf(const WantedRange &range, const ReadLimits &limits) {
    const qint64 to = qMin<qint64>(range.address + range.elements(), limits.end);
    const bool any = range.address >= 0 && to > range.address;
    const Span span = {any ? range.address : 0, any ? int(to) : 0};
    return span;
}

// How many ranges want each address, from where they begin and end: no range is walked through.
class Coverage {
public:
    Coverage(int begin, int end) : begin_(begin), singles_(end - begin + 1), pairs_(end - begin + 1) {}

    void addSingles(int from, int to) { add(singles_, from, to); }
    // Pairs from the first element on, and an element that is left over.
    void addPairs(int from, int to) {
        const int lastPairEnd = to - (to - from) % 2;
        add(pairs_, from, lastPairEnd);
        add(singles_, lastPairEnd, to);
    }
    // To be called once, after the last range.
    void sumUp() {
        for (int i = 1; i < singles_.size(); ++i) {
            singles_[i] += singles_.at(i - 1);
            pairs_[i] += i < 2 ? 0 : pairs_.at(i - 2);  // pairs of a range begin at every other address
        }
    }
    bool isSingle(int index) const { return singles_.at(index) > 0; }
    bool isPair(int index) const { return pairs_.at(index) > 0; }

private:
    void add(QVector<int> &counts, int from, int to) {
        ++counts[from - begin_];
        --counts[to - begin_];
    }

    int begin_;
    QVector<int> singles_;
    QVector<int> pairs_;
};

void addValues(Coverage &coverage, const Span &span, int unit, const ReadLimits &limits) {
    if (unit != 2 || limits.elementsPerRead < 2) {
        coverage.addSingles(span.from, span.to);
    } else if (limits.bound > span.from && limits.bound < span.to && (limits.bound - span.from) % 2 != 0) {
        coverage.addPairs(span.from, limits.bound);
        coverage.addSingles(limits.bound, limits.bound + 1);
        coverage.addPairs(limits.bound + 1, span.to);
    } else {
        coverage.addPairs(span.from, span.to);
    }
}

}  // namespace

WantedElements::WantedElements() : limits_(readLimits(-1, 1)), begin_(0) {}

WantedElements::WantedElements(const QVector<WantedRange> &ranges, const ReadLimits &limits)
    : limits_(limits), begin_(limits.end) {
    int wantedEnd = 0;
    for (const WantedRange &range : ranges) {
        const Span span = spanOf(range, limits);
        if (span.from < span.to) {
            begin_ = qMin(begin_, span.from);
            wantedEnd = qMax(wantedEnd, span.to);
        }
    }
    if (begin_ >= wantedEnd) {
        begin_ = 0;
        return;
    }
    flags_ = QByteArray(wantedEnd - begin_ + 1, '\0');
    char *flags = flags_.data();
    Coverage coverage(begin_, wantedEnd);
    for (const WantedRange &range : ranges) {
        const Span span = spanOf(range, limits);
        if (span.from < span.to) {
            addValues(coverage, span, range.unit, limits);
            flags[span.from - begin_] = Boundary;
            flags[span.to - begin_] = Boundary;
        }
    }
    coverage.sumUp();
    for (int i = 0; i < flags_.size(); ++i) {
        flags[i] = char(flags[i] | (coverage.isSingle(i) ? Single : 0) | (coverage.isPair(i) ? Pair : 0));
    }
}

}  // namespace dravo
