// Results as a table of ratios, in Markdown, besides the usual output.
#ifndef DRAVO_BENCH_RATIO_TABLE_H
#define DRAVO_BENCH_RATIO_TABLE_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Takes benchmarks named what/who/size and prints, when all have run, a row for each what and size: the time of each
/// who and the ratio of the first to the others. Of a what with one who alone and three sizes or more it prints the
/// exponent with which time grows. Times are the medians of the repetitions, of the thread that works.
class RatioTable : public benchmark::ConsoleReporter {
public:
    using ConsoleReporter::ConsoleReporter;

    void ReportRuns(const std::vector<Run> &runs) override;
    void Finalize() override;

    /// Whether any benchmark ended with an error.
    bool hasErrors() const { return hasErrors_; }

private:
    struct Row {
        std::string what;
        long size;
        std::vector<std::pair<std::string, double>> times;  // who, nanoseconds
    };
    void add(const std::string &what, const std::string &who, long size, double nanoseconds);

    std::vector<Row> rows_;
    std::vector<std::string> notes_;  // counters of runs
    bool hasErrors_ = false;
};

#endif  // DRAVO_BENCH_RATIO_TABLE_H
