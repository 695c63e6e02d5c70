#include "host/plan/page_scale.h"

#include <cmath>

namespace {
constexpr double kRound[] = {1, 2, 5, 10};
}

QVector<double> linearTicks(double highest, int about) {
    const double power = std::pow(10, std::floor(std::log10(highest / about)));
    double step = power * 10;
    for (const double round : kRound) {
        if (highest / (power * round) <= about) {
            step = power * round;
            break;
        }
    }
    QVector<double> ticks;
    for (int i = 0; i * step <= highest; ++i) {
        ticks.append(i * step);
    }
    return ticks;
}

QVector<double> logarithmicTicks(double lowest, double highest) {
    QVector<double> ticks;
    for (double power = std::pow(10, std::floor(std::log10(lowest)));; power *= 10) {
        for (const double round : {1.0, 1.5, 2.0, 3.0, 5.0, 7.0}) {
            if (power * round <= lowest) {
                ticks.clear();
            }
            ticks.append(power * round);
            if (power * round >= highest && ticks.size() > 1) {
                return ticks;
            }
        }
    }
}

QString axisTime(double ms) {
    return ms < 1000 ? QStringLiteral("%1 ms").arg(ms) : QStringLiteral("%1 s").arg(ms / 1000);
}
