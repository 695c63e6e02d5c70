#include "line/request_walls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <set>

#include "korvel_dravo_elements.h"
#include "line/read_plan.h"

using namespace dravo;

namespace {

const ReadGroup kGroup = {3, 7};
const qint64 kRetryUs = 60000000;
const LineCost kLine = {9600, 11, 8, 0};

std::string textOf(const QVector<ElementRange> &requests) {
    std::string text;
    for (const ElementRange &request : requests) {
        text += (text.empty() ? "" : " ") + std::to_string(request.first) + "+" + std::to_string(request.count);
    }
    return text;
}

/// A controller that refuses every read which touches certain addresses, and a host that learns.
struct Scene {
    WantedElements wanted() const { return WantedElements(variables, readLimits(kGroup.elemType, limit)); }

    bool isGood(const ElementRange &request) const {
        const auto next = refused.lower_bound(request.first);
        return next == refused.end() || *next >= request.end();
    }

    /// Asks once. What came goes to values, what was learnt to said.
    void ask(const ElementRange &request) {
        ++asked;
        if (isGood(request)) {
            answers.push_back(request);
            walls.answered(kGroup, request);
            return;
        }
        const Lesson lesson = walls.refused(kGroup, request, wanted(), nowUs);
        if (lesson.learnt != NothingNew) {
            said += lesson.text(kGroup).toStdString() + "\n";
        }
    }

    QVector<ElementRange> plan() const { return planReads(wanted(), ReadCost(kLine), walls.of(kGroup)); }

    /// @return whether nothing was refused.
    bool pass() {
        QVector<ElementRange> requests = plan();
        std::shuffle(requests.begin(), requests.end(), random);
        answers.clear();
        for (const ElementRange &request : requests) {
            ask(request);
        }
        return int(answers.size()) == requests.size();
    }

    void change(const QVector<WantedRange> &changed) {
        variables = changed;
        walls.wantedChanged({{kGroup, wanted()}});
    }

    std::mt19937 random;
    QVector<WantedRange> variables;
    int limit = 32;
    std::set<int> refused;
    RequestWalls walls{kRetryUs};
    qint64 nowUs = 0;
    int asked = 0;
    std::vector<ElementRange> answers;  // of the last pass
    std::string said;
};

TEST(RequestWalls, GapsThenVariablesThenRefusedAndHealed) {
    Scene scene;
    scene.variables = {{100, 2, 1}, {104, 4, 1}, {108, 2, 2}, {110, 10, 1}, {120, 1, 1}};
    scene.refused = {113};
    EXPECT_EQ(textOf(scene.plan()), "100+21");
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(scene.pass());
    }
    EXPECT_TRUE(scene.pass());
    EXPECT_EQ(textOf(scene.plan()), "100+2 104+4 108+2 120+1");
    EXPECT_EQ(scene.said,
              "station 3 refuses 100 to 120 of type 7: its gaps are no longer read\n"
              "station 3 refuses 104 to 120 of type 7: its variables are read one by one\n"
              "station 3 refuses 110 to 119 of type 7: no longer read, tried again rarely\n");
    EXPECT_TRUE(scene.walls.isRefused(kGroup, {110, 10, 1}));
    EXPECT_TRUE(scene.walls.isRefused(kGroup, {119, 1, 1}));
    EXPECT_FALSE(scene.walls.isRefused(kGroup, {120, 1, 1}));
    EXPECT_FALSE(scene.walls.isRefused(kGroup, {108, 2, 2}));
    EXPECT_FALSE(scene.walls.isRefused({4, 7}, {110, 10, 1}));

    ReadGroup group = {0, 0};
    ElementRange range = {0, 0};
    EXPECT_EQ(scene.walls.nextRetryUs(), kRetryUs);
    EXPECT_FALSE(scene.walls.takeDueRetry(kRetryUs - 1, &group, &range));
    ASSERT_TRUE(scene.walls.takeDueRetry(kRetryUs, &group, &range));
    EXPECT_EQ(group.station * 100 + group.elemType, 307);
    EXPECT_EQ(textOf({range}), "110+10");
    EXPECT_EQ(scene.walls.nextRetryUs(), 2 * kRetryUs);  // even if nothing comes back
    scene.nowUs = kRetryUs + 5;
    scene.ask(range);
    EXPECT_EQ(scene.walls.nextRetryUs(), 2 * kRetryUs + 5);
    EXPECT_EQ(std::count(scene.said.begin(), scene.said.end(), '\n'), 3);  // nothing new
    EXPECT_FALSE(scene.walls.answered(kGroup, {110, 9}));
    EXPECT_FALSE(scene.walls.answered({3, 8}, {110, 10}));
    EXPECT_TRUE(scene.walls.answered(kGroup, {110, 10}));
    EXPECT_EQ(textOf(scene.plan()), "100+2 104+4 108+13");
    EXPECT_EQ(scene.walls.nextRetryUs(), std::numeric_limits<qint64>::max());
}

TEST(RequestWalls, OnlyThePartOfALongVariableIsRefused) {
    Scene scene;
    scene.limit = 10;
    scene.variables = {{0, 30, 1}};
    scene.refused = {15};
    EXPECT_FALSE(scene.pass());
    EXPECT_TRUE(scene.pass());
    EXPECT_EQ(textOf(scene.plan()), "0+10 20+10");
    EXPECT_TRUE(scene.walls.isRefused(kGroup, {0, 30, 1}));
}

TEST(RequestWalls, ChangedVariables) {
    Scene scene;
    scene.variables = {{110, 10, 1}};
    scene.refused = {113};
    scene.pass();
    EXPECT_EQ(textOf(scene.plan()), "");
    scene.change({{100, 8, 1}, {105, 20, 1}});
    EXPECT_EQ(textOf(scene.plan()), "100+10 120+5");  // the lesson holds for another variable around it
    scene.change({{100, 12, 1}, {110, 12, 2}});
    EXPECT_EQ(textOf(scene.plan()), "100+10 110+2 112+8 120+2");  // 112 is a boundary now: to be asked in parts
    scene.change({{113, 1, 1}});
    scene.pass();
    scene.change({{112, 4, 2}});
    EXPECT_EQ(textOf(scene.plan()), "114+2");  // a value that holds what was refused
    EXPECT_TRUE(scene.walls.isRefused(kGroup, {112, 1, 2}));
    scene.change({{0, 10, 1}});
    scene.change({{110, 10, 1}});
    EXPECT_EQ(textOf(scene.plan()), "110+10");  // forgotten
    scene.pass();
    scene.limit = 5;
    scene.change(scene.variables);
    EXPECT_EQ(textOf(scene.plan()), "110+5 115+5");
    scene.pass();
    scene.walls.wantedChanged({});
    EXPECT_EQ(scene.walls.nextRetryUs(), std::numeric_limits<qint64>::max());
}

TEST(RequestWalls, ARefusedPairLeavesTheSingleInIt) {
    Scene scene;
    scene.variables = {{110, 2, 2}, {111, 1, 1}};
    scene.refused = {110};
    EXPECT_FALSE(scene.pass());
    EXPECT_EQ(textOf(scene.plan()), "111+1");
    scene.change(scene.variables);
    EXPECT_EQ(textOf(scene.plan()), "111+1");
    EXPECT_TRUE(scene.walls.isRefused(kGroup, {110, 2, 2}));
    EXPECT_FALSE(scene.walls.isRefused(kGroup, {111, 1, 1}));
}

TEST(RequestWalls, WhatIsStillRefusedKeepsItsWalls) {
    Scene scene;
    scene.variables = {{100, 2, 1}, {102, 1, 1}, {103, 2, 1}};
    scene.refused = {100, 102, 103};
    scene.pass();
    scene.pass();
    EXPECT_EQ(textOf(scene.plan()), "");
    ReadGroup group = {0, 0};
    QVector<ElementRange> retries(3);
    for (ElementRange &range : retries) {
        EXPECT_TRUE(scene.walls.takeDueRetry(kRetryUs, &group, &range));
    }
    EXPECT_EQ(textOf(retries), "100+2 102+1 103+2");
    EXPECT_TRUE(scene.walls.answered(kGroup, {100, 2}));
    EXPECT_TRUE(scene.walls.answered(kGroup, {103, 2}));
    EXPECT_EQ(textOf(scene.plan()), "100+2 103+2");
}

TEST(RequestWalls, RequestsThatTeachNothing) {
    RequestWalls walls;
    const WantedElements wanted({{10, 4, 1}, {20, 4, 1}}, readLimits(7, 32));
    for (const ElementRange &request :
         QVector<ElementRange>{{14, 6}, {12, 0}, {12, -1}, {-5, 40}, {0, 2147483647}, {2147483647, 5}}) {
        EXPECT_EQ(walls.refused(kGroup, request, wanted, 0).learnt, NothingNew);
    }
    EXPECT_EQ(walls.refused(kGroup, {10, 14}, wanted, 0).learnt, GapsCut);
    EXPECT_EQ(walls.refused(kGroup, {10, 14}, wanted, 0).learnt, NothingNew);
    EXPECT_FALSE(walls.answered(kGroup, {2147483647, 2147483647}));
    EXPECT_FALSE(walls.isRefused(kGroup, {2147483647, 2147483647, 2}));
}

/// Whether the answers hold every value of the variable whole, in halves where no request can hold both.
bool isRead(const Scene &scene, const WantedRange &variable) {
    const auto isHeld = [&](int first, int count) {
        return std::any_of(scene.answers.begin(), scene.answers.end(), [&](const ElementRange &answer) {
            return answer.first <= first && answer.end() >= first + count;
        });
    };
    for (int first = variable.address; first < variable.address + variable.count; first += variable.unit) {
        const bool isHalved = scene.limit == 1 || first + 1 == addressMapBound(kGroup.elemType);
        if (!isHeld(first, variable.unit) && !(isHalved && isHeld(first, 1) && isHeld(first + variable.unit - 1, 1))) {
            return false;
        }
    }
    return true;
}

bool canBeRead(const Scene &scene, const WantedRange &variable) {
    return scene.isGood({variable.address, variable.count});
}

QVector<WantedRange> someVariables(std::mt19937 &random, int base) {
    QVector<WantedRange> variables(1 + int(random() % 14));
    const unsigned pairsOneOf = 1 + unsigned(random() % 3);
    for (WantedRange &variable : variables) {
        const int unit = random() % pairsOneOf == 0 ? 2 : 1;
        const int values = random() % 4 == 0 ? 1 + int(random() % 20) : 1 + int(random() % 3);
        variable = {base + int(random() % 80), values * unit, unit};
    }
    return variables;
}

/// Everything that can be read was read, and exactly the variables that hold refused addresses are marked.
void expectLearnt(const Scene &scene) {
    for (const WantedRange &variable : scene.variables) {
        const std::string name = textOf({{variable.address, variable.count}}) + " of " + std::to_string(variable.unit);
        if (canBeRead(scene, variable)) {
            ASSERT_TRUE(isRead(scene, variable)) << name;
        }
        ASSERT_EQ(scene.walls.isRefused(kGroup, variable), !canBeRead(scene, variable)) << name;
    }
}

TEST(RequestWalls, FourPassesLearnAnything) {
    for (unsigned seed = 0; seed < 6000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Scene scene;
        std::mt19937 &random = scene.random;
        random.seed(seed);
        scene.limit = 1 + int(random() % 40);
        const int base = random() % 2 == 0 ? 0 : addressMapBound(kGroup.elemType) - 40;
        const int oneOf = 2 + int(random() % 40);
        for (int address = base; address < base + 140; ++address) {
            if (random() % unsigned(oneOf) == 0) {
                scene.refused.insert(address);
            }
        }
        for (int change = 0; change < 3; ++change) {
            QVector<WantedRange> variables = someVariables(random, base);
            if (random() % 2 == 0) {
                variables += scene.variables;
            }
            scene.change(variables);
            const WantedElements wanted = scene.wanted();
            if (random() % 2 == 0) {  // requests cut without regard of variables, as another merge may do it
                for (int first = wanted.begin(); first < wanted.end(); first += scene.limit) {
                    scene.ask({first, qMin(scene.limit, wanted.end() - first)});
                }
            }
            for (int pass = 0; pass < 4; ++pass) {
                scene.pass();
            }
            ASSERT_NO_FATAL_FAILURE(expectLearnt(scene));
            ASSERT_TRUE(scene.pass());
        }
        // Every mark goes once the controller lets it.
        scene.refused.clear();
        ReadGroup group = {0, 0};
        ElementRange range = {0, 0};
        while (scene.walls.takeDueRetry(kRetryUs, &group, &range)) {
            scene.ask(range);
        }
        scene.pass();
        ASSERT_NO_FATAL_FAILURE(expectLearnt(scene));
    }
}

}  // namespace
