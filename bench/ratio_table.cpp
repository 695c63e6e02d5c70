#include "ratio_table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

std::string timeText(double nanoseconds) {
    char text[32];
    const char *const unit = nanoseconds < 1e3 ? "ns" : nanoseconds < 1e6 ? "µs" : "ms";
    const double value = nanoseconds < 1e3 ? nanoseconds : nanoseconds < 1e6 ? nanoseconds / 1e3 : nanoseconds / 1e6;
    std::snprintf(text, sizeof text, value < 10 ? "%.2f %s" : value < 100 ? "%.1f %s" : "%.0f %s", value, unit);
    return text;
}

// Slope of the logarithms, by least squares.
double exponent(const std::vector<std::pair<double, double>> &points) {
    double x = 0, y = 0, xx = 0, xy = 0;
    for (const auto &[size, time] : points) {
        x += std::log(size);
        y += std::log(time);
        xx += std::log(size) * std::log(size);
        xy += std::log(size) * std::log(time);
    }
    const auto n = double(points.size());
    return (n * xy - x * y) / (n * xx - x * x);
}

}  // namespace

void RatioTable::ReportRuns(const std::vector<Run> &runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run &run : runs) {
        hasErrors_ = hasErrors_ || run.error_occurred;
        const std::string &name = run.run_name.function_name;
        const size_t first = name.find('/');
        const size_t second = name.find('/', first + 1);
        const bool counts = run.repetitions > 1 ? run.aggregate_name == "median" : run.run_type == Run::RT_Iteration;
        if (counts && second != std::string::npos) {
            const double seconds = run.cpu_accumulated_time / double(run.iterations);
            add(name.substr(0, first), name.substr(first + 1, second - first - 1), std::stol(name.substr(second + 1)),
                seconds * 1e9);
            for (const auto &[counter, value] : run.counters) {
                char text[200];
                std::snprintf(text, sizeof text, "%s: %s %.4g", name.c_str(), counter.c_str(), value.value);
                notes_.emplace_back(text);
            }
        }
    }
}

void RatioTable::add(const std::string &what, const std::string &who, long size, double nanoseconds) {
    const auto fits = [&](const Row &row) { return row.what == what && row.size == size; };
    auto row = std::find_if(rows_.begin(), rows_.end(), fits);
    if (row == rows_.end()) {
        row = rows_.insert(row, Row{what, size, {}});
    }
    row->times.emplace_back(who, nanoseconds);
}

void RatioTable::Finalize() {
    std::printf("\n| work | size | driver | beside it | ratio |\n|---|---|---|---|---|\n");
    std::map<std::string, std::vector<std::pair<double, double>>> growth;
    for (const Row &row : rows_) {
        const double own = row.times.front().second;
        if (row.times.size() == 1) {
            std::printf("| %s | %ld | %s | | |\n", row.what.c_str(), row.size, timeText(own).c_str());
            growth[row.what].emplace_back(row.size, own);
        }
        for (size_t i = 1; i < row.times.size(); ++i) {
            const auto &[who, time] = row.times[i];
            std::printf("| %s | %ld | %s | %s %s | %.2f |\n", row.what.c_str(), row.size, timeText(own).c_str(),
                        who.c_str(), timeText(time).c_str(), own / time);
        }
    }
    std::printf("\n");
    for (const auto &[what, points] : growth) {
        if (points.size() > 2) {
            std::printf("- %s: time grows with the power %.2f of the size\n", what.c_str(), exponent(points));
        }
    }
    for (const std::string &note : notes_) {
        std::printf("- %s\n", note.c_str());
    }
}
