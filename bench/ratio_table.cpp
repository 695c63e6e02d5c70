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

std::string countersText(const benchmark::UserCounters &counters) {
    std::string text;
    for (const auto &[name, counter] : counters) {
        char value[32];
        std::snprintf(value, sizeof value, " %.4g", counter.value);
        text += (text.empty() ? "" : ", ") + name + value;
    }
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
        if (run.run_type == Run::RT_Iteration && !run.error_occurred && second != std::string::npos) {
            const double seconds = run.cpu_accumulated_time / double(run.iterations);
            add(name.substr(0, first), std::stol(name.substr(second + 1)),
                {name.substr(first + 1, second - first - 1), seconds * 1e9, countersText(run.counters)});
        }
    }
}

void RatioTable::add(const std::string &what, long size, const Time &time) {
    auto row = std::find_if(rows_.begin(), rows_.end(), [&](const Row &r) { return r.what == what && r.size == size; });
    if (row == rows_.end()) {
        row = rows_.insert(row, Row{what, size, {}});
    }
    std::vector<Time> &times = row->times;
    const auto known = std::find_if(times.begin(), times.end(), [&](const Time &t) { return t.who == time.who; });
    if (known == times.end()) {
        times.push_back(time);
    } else if (time.nanoseconds < known->nanoseconds) {
        *known = time;
    }
}

void RatioTable::Finalize() {
    std::printf("\n| work | size | driver | beside it | ratio | counted |\n|---|---|---|---|---|---|\n");
    std::map<std::string, std::vector<std::pair<double, double>>> growth;
    for (const Row &row : rows_) {
        const Time &own = row.times.front();
        if (row.times.size() == 1) {
            std::printf("| %s | %ld | %s | | | %s |\n", row.what.c_str(), row.size, timeText(own.nanoseconds).c_str(),
                        own.counters.c_str());
            growth[row.what].emplace_back(row.size, own.nanoseconds);
        }
        for (size_t i = 1; i < row.times.size(); ++i) {
            const Time &other = row.times[i];
            std::printf("| %s | %ld | %s | %s %s | %.2f | %s |\n", row.what.c_str(), row.size,
                        timeText(own.nanoseconds).c_str(), other.who.c_str(), timeText(other.nanoseconds).c_str(),
                        own.nanoseconds / other.nanoseconds, own.counters.c_str());
        }
    }
    std::printf("\n");
    for (const auto &[what, points] : growth) {
        if (points.size() > 2) {
            std::printf("- %s: time grows with the power %.2f of the size\n", what.c_str(), exponent(points));
        }
    }
}
