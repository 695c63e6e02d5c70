// Which variables lie where. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_VARIABLE_INDEX_H
#define DRAVO_HOST_PLAN_VARIABLE_INDEX_H

#include <functional>

#include "korvel_dravo_line.h"

class VariableIndex {
public:
    /// variables: usable; outlive the index.
    explicit VariableIndex(const QVector<dravo::Variable> &variables);

    /// Hands over the place in the list of each variable that has some of the elements, by ascending address.
    void forEach(const dravo::Elements &elements, const std::function<void(int)> &take) const;
    bool isWanted(int station, int elemType, int address) const;

    const dravo::Variable &at(int place) const { return variables_.at(place); }

private:
    bool before(int place, const dravo::Elements &elements, qint64 address) const;

    const QVector<dravo::Variable> &variables_;
    QVector<int> order_;  // places by station, type and address
    int longest_ = 0;     // elements of one variable
};

#endif  // DRAVO_HOST_PLAN_VARIABLE_INDEX_H
