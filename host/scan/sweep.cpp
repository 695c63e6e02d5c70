#include "host/scan/sweep.h"

namespace {

Answer answerOf(dravo::LineEvent::Failure failure) {
    switch (failure) {
        case dravo::LineEvent::None:
        case dravo::LineEvent::Refused:
            return Answer::Whole;
        case dravo::LineEvent::Damaged:
            return Answer::Damaged;
        case dravo::LineEvent::NoAnswer:
        case dravo::LineEvent::NotSure:
            break;
    }
    return Answer::None;
}

}  // namespace

Sweep::Sweep(const std::vector<int> &stations, int rounds) : rounds_(rounds) {
    for (const int station : stations) {
        stations_.push_back({station});
    }
}

std::optional<int> Sweep::next() {
    for (; round_ <= rounds_; ++round_, place_ = 0) {
        while (place_ < stations_.size()) {
            const StationAnswer &candidate = stations_[place_++];
            if (candidate.answer != Answer::Whole) {
                return candidate.station;
            }
        }
    }
    return std::nullopt;
}

void Sweep::judged(const dravo::LineEvent &exchange) {
    improve({exchange.station, answerOf(exchange.failure), exchange.code, exchange.exceptionCode, exchange.replyUs});
}

void Sweep::heardLate(int station) {
    improve({station, Answer::Late});
}

void Sweep::improve(const StationAnswer &answer) {
    for (StationAnswer &known : stations_) {
        if (known.station == answer.station && known.answer < answer.answer) {
            known = answer;
        }
    }
}

std::vector<StationAnswer> Sweep::heard() const {
    std::vector<StationAnswer> answers;
    for (const StationAnswer &station : stations_) {
        if (station.answer != Answer::None) {
            answers.push_back(station);
        }
    }
    return answers;
}

double Sweep::done() const {
    return (double(round_ - 1) + double(place_) / double(stations_.size())) / double(rounds_);
}
