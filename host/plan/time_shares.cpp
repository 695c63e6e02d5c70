#include "host/plan/time_shares.h"

namespace {
constexpr int kSecondSilence = 6;
}

QVector<TimeShare> timeShares(const PlannedRequest &request, const RequestCost &cost) {
    const int data = dataBytes(request.frame);
    const double perByte = double(cost.charactersUs(1000)) / 1000;
    const double gap = qMin(double(data), request.gap() * request.bitsPerElement() / 8);
    return {
        {"out", "requests", request.bytesOut * perByte},
        {"silence", "silences", double(cost.silenceUs())},
        {"turnaround", "turnaround", double(cost.turnaroundUs())},
        {"frame", "reply frames", (request.bytesIn - data) * perByte},
        {"value", "values", (data - gap) * perByte},
        {"gap", "gaps", gap * perByte},
        {"silence", "silences", double(cost.silenceUs())},
    };
}

QVector<TimeShare> timeShares(const PassPlan &plan) {
    const RequestCost cost(plan.line);
    QVector<TimeShare> sum = timeShares(PlannedRequest(), cost);
    for (TimeShare &share : sum) {
        share.us = 0;
    }
    for (const PlannedRequest &request : plan.requests) {
        const QVector<TimeShare> shares = timeShares(request, cost);
        for (int i = 0; i < shares.size(); ++i) {
            sum[i == kSecondSilence ? 1 : i].us += shares.at(i).us;
        }
    }
    sum.remove(kSecondSilence);
    return sum;
}
