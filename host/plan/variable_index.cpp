#include "host/plan/variable_index.h"

#include <algorithm>
#include <numeric>
#include <tuple>

VariableIndex::VariableIndex(const QVector<dravo::Variable> &variables)
    : variables_(variables), order_(variables.size()) {
    std::iota(order_.begin(), order_.end(), 0);
    const auto key = [this](int place) {
        const dravo::Elements &elements = variables_.at(place).elements;
        return std::make_tuple(elements.station, elements.elemType, elements.address, place);
    };
    std::sort(order_.begin(), order_.end(), [&key](int a, int b) { return key(a) < key(b); });
    for (const dravo::Variable &variable : variables_) {
        longest_ = std::max(longest_, variable.elements.count);
    }
}

bool VariableIndex::before(int place, const dravo::Elements &elements, qint64 address) const {
    const dravo::Elements &own = variables_.at(place).elements;
    return std::make_tuple(own.station, own.elemType, qint64(own.address)) <
           std::make_tuple(elements.station, elements.elemType, address);
}

void VariableIndex::forEach(const dravo::Elements &elements, const std::function<void(int)> &take) const {
    const qint64 end = qint64(elements.address) + elements.count;
    // No variable that begins earlier reaches so far.
    auto next = std::lower_bound(order_.begin(), order_.end(), qint64(elements.address) - longest_,
                                 [&](int place, qint64 address) { return before(place, elements, address); });
    for (; next != order_.end() && before(*next, elements, end); ++next) {
        const dravo::Elements &own = variables_.at(*next).elements;
        if (qint64(own.address) + own.count > elements.address) {
            take(*next);
        }
    }
}

bool VariableIndex::isWanted(int station, int elemType, int address) const {
    bool wanted = false;
    forEach({station, elemType, address, 1}, [&wanted](int) { wanted = true; });
    return wanted;
}
