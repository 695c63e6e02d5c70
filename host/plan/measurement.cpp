#include "host/plan/measurement.h"

#include <algorithm>

Measurement::Measurement(const PassPlan &plan) : times_(plan.requests.size()) {
    for (int place = 0; place < plan.requests.size(); ++place) {
        places_.insert(plan.requests.at(place).sent, place);
    }
}

void Measurement::take(const dravo::LineEvent &event, qint64 nowUs) {
    if (event.kind == dravo::LineEvent::PassDone) {
        ++passes_;
    } else if (event.kind == dravo::LineEvent::Exchange) {
        takeExchange(event, nowUs);
    }
}

void Measurement::takeExchange(const dravo::LineEvent &exchange, qint64 nowUs) {
    const bool good = exchange.failure == dravo::LineEvent::None && exchange.over;
    const int place = places_.value(exchange.request, -1);
    if (place >= 0 && exchange.over) {
        times_[place].wasAsked = true;
        times_[place].failure = good ? QString() : dravo::describeResult(exchange.code, exchange.exceptionCode);
    }
    if (place >= 0 && good && lastEndUs_ >= 0 && passes_ > 0) {
        times_[place].us.append(nowUs - lastEndUs_);
    }
    lastEndUs_ = good ? nowUs : -1;
}

void Measurement::fill(PassPlan *plan) const {
    plan->isMeasured = true;
    for (int place = 0; place < times_.size(); ++place) {
        QVector<qint64> us = times_.at(place).us;
        PlannedRequest &request = plan->requests[place];
        request.failure = times_.at(place).wasAsked ? times_.at(place).failure : QStringLiteral("not asked");
        if (!us.isEmpty()) {
            const auto middle = us.begin() + us.size() / 2;
            std::nth_element(us.begin(), middle, us.end());
            request.measuredUs = *middle;
        }
    }
}
