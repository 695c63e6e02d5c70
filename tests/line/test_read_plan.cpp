// Where reads are cut, and what refused ones teach about it.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <set>

#include "korvel_dravo_elements.h"
#include "line/read_plan.h"
#include "line/request_walls.h"

using namespace dravo;

namespace {

using Requests = QVector<ElementRange>;
using Variables = QVector<WantedRange>;

const qint64 kRetryUs = 60000000;

/// A controller that refuses every read which touches certain addresses, and a host that learns. Its variables are
/// crowded and overlap, near address 0, the type's bound or the end of its addresses.
struct RefusingController {
    /// Line, type, limits and refused addresses are drawn from the seed.
    explicit RefusingController(unsigned seed) : random(seed), cost({9600, 11 + below(2), below(9), 0}) {
        static const int kTypes[] = {1, 3, 7, 8, 8, 10, 10, 13};
        type = kTypes[below(8)];
        drawLimits();
        const int starts[] = {0, limits.end - 14, qMax(limits.bound, 40) - 8 - below(33)};
        base = starts[below(limits.bound == kNoBound ? 2 : 3)];
        const int reach = qMin(140, limits.end - base);
        for (int i = below(1 + below(reach / 2)); i > 0; --i) {
            refused.insert(base + below(reach));
        }
    }

    int below(int bound) { return int(random() % unsigned(bound)); }
    void drawLimits() { limits = readLimits(type, 1 + below(below(2) == 0 ? 4 : 40)); }
    Variables drawnVariables(int most, int span, int mostValues) {
        Variables drawn(1 + below(most));
        for (WantedRange &range : drawn) {
            range.unit = limits.bitsPerElement == 16 ? 1 + below(2) : 1;
            range.address = base + below(qMin(span, limits.end - base - 1));
            range.count = below(qMin(range.unit * mostValues, limits.end - range.address - 1) + 1);
        }
        return drawn;
    }

    ReadGroup group() const { return {3, type}; }
    WantedElements wanted() const { return {watched, limits}; }
    Requests plan() const { return planReads(wanted(), cost, walls.of(group())); }
    void watch(const Variables &variables) {
        watched = variables;
        walls.wantedChanged({{group(), wanted()}});
    }
    bool isGood(const ElementRange &range) const {
        return refused.lower_bound(range.first) == refused.lower_bound(int(range.end()));
    }
    /// @return what the host says to it.
    QString ask(const ElementRange &request) {
        if (!isGood(request)) {
            return walls.refused(group(), request, wanted(), 0).text(group()) + '\n';
        }
        walls.answered(group(), request);
        return QString();
    }
    void pass(Requests requests) {
        std::shuffle(requests.begin(), requests.end(), random);
        std::for_each(requests.begin(), requests.end(), [this](const ElementRange &request) { ask(request); });
    }

    /// The parts of a variable that must lie in one request each.
    Requests valuesOf(const WantedRange &range) const {
        Requests values;
        for (int first = range.address; first < range.address + range.elements(); first += range.unit) {
            const bool halved = range.unit == 2 && (limits.elementsPerRead == 1 || first + 1 == limits.bound);
            values += halved ? Requests{{first, 1}, {first + 1, 1}} : Requests{{first, range.unit}};
        }
        return values;
    }
    bool isAllowed(const ElementRange &request, const Requests &values) const {
        const auto cuts = [&](int wall) { return wall > request.first && wall < request.end(); };
        const QVector<int> learnt = walls.of(group()).walls;
        return request.count <= limits.elementsPerRead && !cuts(limits.bound) &&
               (values.contains(request) || std::none_of(learnt.begin(), learnt.end(), cuts));
    }
    /// Of equal times the one with fewer requests is less.
    qint64 costOf(const ElementRange &request) const { return cost.exact(limits.dataBytes(request.count)) * 64 + 1; }
    /// Of all ways to read the values, which ascend, number from and those behind it.
    qint64 cheapest(const Requests &values, int from) const {
        qint64 best = from == values.size() ? 0 : LLONG_MAX / 2;
        int end = 0;
        for (int last = from; last < values.size(); ++last) {
            end = qMax(end, int(values.at(last).end()));
            const ElementRange request = {values.at(from).first, end - values.at(from).first};
            if (isAllowed(request, values)) {
                best = qMin(best, costOf(request) + cheapest(values, last + 1));
            }
        }
        return best;
    }

    std::mt19937 random;
    ReadCost cost;
    int type;
    ReadLimits limits;
    int base;
    std::set<int> refused;
    Variables watched;
    RequestWalls walls{kRetryUs};
};

TEST(ReadPlan, LimitsCostsAndRangesOfAnySize) {
    const auto elementsEndAndBytesOfTwo = [](int type, int frameLimit) {
        const ReadLimits limits = readLimits(type, frameLimit);
        return QList<int>{limits.elementsPerRead, limits.end, limits.dataBytes(2)};
    };
    EXPECT_EQ(elementsEndAndBytesOfTwo(1, INT_MAX), (QList<int>{2000, 65536, 1}));
    EXPECT_EQ(elementsEndAndBytesOfTwo(6, INT_MIN), (QList<int>{8, 55792, 1}));
    EXPECT_EQ(elementsEndAndBytesOfTwo(13, 125), (QList<int>{62, 28024, 8}));
    EXPECT_EQ(elementsEndAndBytesOfTwo(12, 32), (QList<int>{1, 0, 4}));
    EXPECT_EQ(ReadCost({19200, 12, 22, 5000}).us(4), 28750) << "characters, silences and turnaround";
    EXPECT_EQ(ReadCost({115200, 11, 8, 0}).us(4), 5124);
    EXPECT_EQ(ReadCost({0, 10, 8, -1}).us(0), 200000000);
    const Variables beyond = {{INT_MAX, INT_MAX, 2}, {-1, 4, 1}, {INT_MIN, INT_MAX, 1},
                              {0, INT_MIN, 1},       {5, -3, 2}, {100, 40, 1},
                              {23535, INT_MAX, 2}};
    EXPECT_EQ(planReads({beyond, readLimits(7, 32)}, ReadCost({9600, 11, 8, 0}), Refusals()),
              (Requests{{100, 8}, {108, 32}, {23535, 1}}));
    const Variables threeAsFast = {{49, 1, 1}, {164, 1, 1}, {170, 2, 1}, {269, 1, 1}, {373, 1, 1}, {432, 1, 1}};
    EXPECT_EQ(planReads({threeAsFast, readLimits(1, 28)}, ReadCost({9600, 12, 1, 0}), Refusals()).size(), 2);
}

TEST(RequestWalls, GapsThenVariablesThenRefusedAndHealed) {
    RefusingController scene(0);
    scene.type = 7;
    scene.limits = readLimits(7, 32);
    scene.watch({{100, 2, 1}, {104, 4, 1}, {108, 2, 2}, {110, 10, 1}, {120, 1, 1}, {121, 2, 1}});
    scene.refused = {113, 120, 122};
    QString said;
    for (int pass = 0; pass < 3; ++pass) {
        for (const ElementRange &request : scene.plan()) {
            said += scene.ask(request);
        }
    }
    EXPECT_STREQ(qPrintable(said),
                 "station 3 refuses 100 to 122 of type 7: its gaps are no longer read\n"
                 "station 3 refuses 104 to 122 of type 7: its variables are read one by one\n"
                 "station 3 refuses 110 to 119 of type 7: no longer read, tried again rarely\n"
                 "station 3 refuses 120 of type 7: no longer read, tried again rarely\n"
                 "station 3 refuses 121 to 122 of type 7: no longer read, tried again rarely\n");
    EXPECT_FALSE(scene.walls.isRefused({4, 7}, {110, 10, 1}));

    ReadGroup group = {0, 0};
    Requests retries(4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(scene.walls.takeDueRetry(i == 0 ? kRetryUs - 1 : kRetryUs, &group, &retries[i]), i > 0);
    }
    EXPECT_EQ(scene.walls.refused({3, 7}, {110, 10}, scene.wanted(), kRetryUs + 5).learnt, NothingNew);
    EXPECT_TRUE(scene.walls.takeDueRetry(3 * kRetryUs, &group, &retries[0]));
    EXPECT_EQ(retries, (Requests{{120, 1}, {110, 10}, {120, 1}, {121, 2}}));  // the longest overdue first
    EXPECT_FALSE(scene.walls.answered({3, 8}, {110, 10}));
    EXPECT_TRUE(scene.walls.answered({3, 7}, {110, 10}) && scene.walls.answered({3, 7}, {121, 2}));
    EXPECT_EQ(scene.plan(), (Requests{{100, 2}, {104, 4}, {108, 12}, {121, 2}}));  // 120 keeps its walls
    EXPECT_FALSE(scene.walls.isRefused({3, 7}, {INT_MAX, INT_MAX, 2}));
    EXPECT_FALSE(scene.walls.answered({3, 7}, {INT_MAX, INT_MAX}));
    EXPECT_EQ(scene.walls.refused({3, 7}, {100, 23}, scene.wanted(), 0).learnt, NothingNew);
    for (const ElementRange &request : Requests{{104, -1}, {-5, 200}, {0, INT_MAX}, {INT_MAX, 5}}) {
        EXPECT_EQ(RequestWalls().refused({3, 7}, request, scene.wanted(), 0).learnt, NothingNew) << request.first;
    }
}

/// Only variables that hold refused addresses are marked, and no cuts are faster. After three passes the others are
/// read, after four all are marked and nothing is refused any more.
void expectBestPlan(const RefusingController &scene, int passes) {
    const auto isGood = [&scene](const ElementRange &range) { return scene.isGood(range); };
    const Requests plan = scene.plan();
    Requests values;  // that are not marked
    for (const WantedRange &variable : scene.watched) {
        const Requests parts = scene.valuesOf(variable);
        const bool good = std::all_of(parts.begin(), parts.end(), isGood);
        const bool marked = scene.walls.isRefused(scene.group(), variable);
        EXPECT_TRUE(marked != good || (!marked && passes < 4)) << variable.address;
        for (const ElementRange &value : parts) {
            const auto reads = [&](const ElementRange &request) {
                return request.first <= value.first && request.end() >= value.end() && (passes < 3 || isGood(request));
            };
            EXPECT_TRUE(!good || std::any_of(plan.begin(), plan.end(), reads)) << value.first;
            if (!scene.walls.isRefused(scene.group(), {value.first, value.count, value.count})) {
                values.append(value);
            }
        }
    }
    std::sort(values.begin(), values.end(), [](auto &a, auto &b) { return a.first < b.first; });
    qint64 cost = 0;
    for (const ElementRange &request : plan) {
        EXPECT_TRUE(scene.isAllowed(request, values) && (passes < 4 || isGood(request))) << request.first;
        cost += scene.costOf(request);
    }
    EXPECT_TRUE(values.size() > 12 || cost == scene.cheapest(values, 0));
}

TEST(ReadPlan, FourPassesLearnAnythingAndNoCutsAreFaster) {
    for (unsigned seed = 0; seed < 6000 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RefusingController scene(seed);
        for (int change = 0; change < 3; ++change) {
            const Variables before = scene.below(2) == 0 ? scene.watched : Variables();
            scene.drawLimits();
            const int spans[] = {16, 80, 960 / scene.limits.bitsPerElement};
            const int most = scene.below(2) == 0 ? 7 : 14;
            scene.watch(before + scene.drawnVariables(most, spans[scene.below(3)], scene.below(4) == 0 ? 20 : 3));
            for (int others = scene.below(9); others > 0; --others) {  // cut by another merge
                scene.ask({scene.base + scene.below(40), 1 + scene.below(scene.limits.elementsPerRead)});
            }
            for (int passes = 0; passes < 4; ++passes) {
                expectBestPlan(scene, passes);
                scene.pass(scene.plan());
            }
            scene.watch(scene.watched);
            expectBestPlan(scene, 4);
        }
        // Every mark goes once the controller lets it, and nothing is kept of what nobody wants.
        scene.refused.clear();
        ReadGroup group = {0, 0};
        for (ElementRange range = {0, 0}; scene.walls.takeDueRetry(kRetryUs, &group, &range); scene.ask(range)) {
            EXPECT_LE(range.count, scene.limits.elementsPerRead);
        }
        scene.pass(scene.plan());
        expectBestPlan(scene, 4);
        scene.watch({});
        EXPECT_TRUE(scene.walls.of(scene.group()).walls.isEmpty());
    }
}

}  // namespace
