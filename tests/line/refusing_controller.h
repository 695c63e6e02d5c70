// A controller that refuses every read which touches certain addresses, and a host that learns. Its variables are
// crowded and overlap, near address 0, the type's bound or the end of its addresses.
#ifndef DRAVO_TESTS_LINE_REFUSING_CONTROLLER_H
#define DRAVO_TESTS_LINE_REFUSING_CONTROLLER_H

#include <algorithm>
#include <random>
#include <set>

#include "korvel_dravo_elements.h"
#include "line/read_plan.h"
#include "line/request_walls.h"

using Requests = QVector<dravo::ElementRange>;
using Variables = QVector<dravo::WantedRange>;

const qint64 kRetryUs = 60000000;

struct RefusingController {
    /// Line, type, limits and refused addresses are drawn from the seed.
    explicit RefusingController(unsigned seed) : random(seed), cost(kLines[below(3)]) {
        static const int kTypes[] = {1, 3, 7, 8, 8, 10, 10, 13};
        type = kTypes[below(8)];
        drawLimits();
        const int starts[] = {0, limits.end - 14, qMax(limits.bound, 40) - 8 - below(33)};
        base = starts[below(limits.bound == dravo::kNoBound ? 2 : 3)];
        const int reach = qMin(140, limits.end - base);
        for (int i = below(1 + below(reach / 2)); i > 0; --i) {
            refused.insert(base + below(reach));
        }
    }

    int below(int bound) { return int(random() % unsigned(bound)); }
    void drawLimits() { limits = dravo::readLimits(type, 1 + below(below(2) == 0 ? 4 : 40)); }
    Variables drawnVariables(int most, int span, int mostValues) {
        Variables drawn(1 + below(most));
        for (dravo::WantedRange &range : drawn) {
            range.unit = limits.bitsPerElement == 16 ? 1 + below(2) : 1;
            range.address = base + below(qMin(span, limits.end - base - 1));
            range.count = below(qMin(range.unit * mostValues, limits.end - range.address - 1) + 1);
        }
        return drawn;
    }

    dravo::ReadGroup group() const { return {3, type}; }
    dravo::WantedElements wanted() const { return {watched, limits}; }
    Requests plan() const { return dravo::planReads(wanted(), cost, walls.of(group())); }
    void watch(const Variables &variables) {
        watched = variables;
        walls.wantedChanged({{group(), wanted()}});
    }

    bool isGood(const dravo::ElementRange &range) const {
        const auto next = refused.lower_bound(range.first);
        return next == refused.end() || *next >= range.end();
    }
    void ask(const dravo::ElementRange &request) {
        if (isGood(request)) {
            walls.answered(group(), request);
        } else {
            said += walls.refused(group(), request, wanted(), 0).text(group()) + QLatin1Char('\n');
        }
    }
    void pass(Requests requests) {
        std::shuffle(requests.begin(), requests.end(), random);
        std::for_each(requests.begin(), requests.end(), [this](const dravo::ElementRange &request) { ask(request); });
    }
    /// Requests cut without regard of variables, as another merge may make them.
    Requests otherMerge() const {
        Requests requests;
        for (int first = wanted().begin(); first < wanted().end(); first += limits.elementsPerRead) {
            requests.append({first, qMin(limits.elementsPerRead, wanted().end() - first)});
        }
        return requests;
    }

    /// The parts of a variable that must lie in one request each.
    Requests valuesOf(const dravo::WantedRange &range) const {
        Requests values;
        for (int first = range.address; first < range.address + range.elements(); first += range.unit) {
            const bool halved = range.unit == 2 && (limits.elementsPerRead == 1 || first + 1 == limits.bound);
            for (int part = 0; part < range.unit; part += halved ? 1 : range.unit) {
                values.append({first + part, halved ? 1 : range.unit});
            }
        }
        return values;
    }

    // On the first line a request costs as much as 20 bytes of data.
    static constexpr dravo::LineCost kLines[] = {{9600, 11, 8, 0}, {19200, 12, 8, 5000}, {9600, 12, 0, 0}};
    std::mt19937 random;
    dravo::ReadCost cost;
    int type;
    dravo::ReadLimits limits;
    int base;
    std::set<int> refused;
    Variables watched;
    dravo::RequestWalls walls{kRetryUs};
    QString said;
};

#endif  // DRAVO_TESTS_LINE_REFUSING_CONTROLLER_H
