// Results as a table of ratios, in Markdown, besides the usual output.
#ifndef DRAVO_BENCH_RATIO_TABLE_H
#define DRAVO_BENCH_RATIO_TABLE_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Takes benchmarks named what/who/size and prints, when all have run, a row for each what and size: the time of each
/// who and the ratio of the first to the others. Of a what with one who alone and three sizes or more it prints the
/// exponent with which time grows. Times are of the thread that works and the least of the repetitions: what else the
/// machine does only adds to them.
class RatioTable : public benchmark::ConsoleReporter {
public:
    using ConsoleReporter::ConsoleReporter;

    void ReportRuns(const std::vector<Run> &runs) override;
    void Finalize() override;

    /// Whether any benchmark ended with an error.
    bool hasErrors() const { return hasErrors_; }

private:
    struct Time {
        std::string who;
        double nanoseconds;
        std::string counters;
    };
    struct Row {
        std::string what;
        long size;
        std::vector<Time> times;
    };
    void add(const std::string &what, long size, const Time &time);

    std::vector<Row> rows_;
    bool hasErrors_ = false;
};

#endif  // DRAVO_BENCH_RATIO_TABLE_H
