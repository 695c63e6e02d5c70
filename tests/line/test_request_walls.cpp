#include <gtest/gtest.h>

#include <climits>

#include "line/refusing_controller.h"

using namespace dravo;

namespace {

TEST(RequestWalls, GapsThenVariablesThenRefusedAndHealed) {
    RefusingController scene(0);
    scene.type = 7;
    scene.limits = readLimits(7, 32);
    scene.watch({{100, 2, 1}, {104, 4, 1}, {108, 2, 2}, {110, 10, 1}, {120, 1, 1}, {121, 2, 1}});
    scene.refused = {113, 120, 122};
    EXPECT_FALSE(scene.pass(scene.plan()) || scene.pass(scene.plan()) || scene.pass(scene.plan()));
    EXPECT_EQ(scene.plan(), (Requests{{100, 2}, {104, 4}, {108, 2}}));
    EXPECT_STREQ(qPrintable(scene.said),
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
    EXPECT_EQ(scene.walls.nextRetryUs(), 2 * kRetryUs);  // even if nothing comes back
    EXPECT_EQ(scene.walls.refused({3, 7}, {110, 10}, scene.wanted(), kRetryUs + 5).learnt, NothingNew);
    EXPECT_TRUE(scene.walls.takeDueRetry(3 * kRetryUs, &group, &retries[0]));
    EXPECT_EQ(retries, (Requests{{120, 1}, {110, 10}, {120, 1}, {121, 2}}));  // the longest overdue first
    EXPECT_FALSE(scene.walls.answered({3, 8}, {110, 10}));
    EXPECT_TRUE(scene.walls.answered({3, 7}, {110, 10}) && scene.walls.answered({3, 7}, {121, 2}));
    EXPECT_EQ(scene.plan(), (Requests{{100, 2}, {104, 4}, {108, 12}, {121, 2}}));  // 120 keeps its walls
    EXPECT_TRUE(scene.walls.answered({3, 7}, {120, 1}));
    EXPECT_EQ(scene.plan(), (Requests{{100, 2}, {104, 4}, {108, 15}}));
    EXPECT_EQ(scene.walls.nextRetryUs(), LLONG_MAX);

    EXPECT_EQ(scene.walls.refused({3, 7}, {100, 23}, scene.wanted(), 0).learnt, NothingNew);
    for (const ElementRange &request : Requests{{102, 2}, {104, -1}, {-5, 200}, {0, INT_MAX}, {INT_MAX, 5}}) {
        EXPECT_EQ(RequestWalls().refused({3, 7}, request, scene.wanted(), 0).learnt, NothingNew) << request.first;
    }
    EXPECT_FALSE(scene.walls.answered({3, 7}, {INT_MAX, INT_MAX}));
    EXPECT_FALSE(scene.walls.isRefused({3, 7}, {INT_MAX, INT_MAX, 2}));
}

/// Everything that can be read was read, and exactly the variables that hold refused addresses are marked.
void expectLearnt(const RefusingController &scene) {
    for (const WantedRange &variable : scene.watched) {
        bool good = true;
        bool read = true;
        for (const ElementRange &value : scene.valuesOf({variable})) {
            good = good && scene.isGood(value);
            read = read && std::any_of(scene.answers.begin(), scene.answers.end(), [&](const ElementRange &answer) {
                       return answer.first <= value.first && answer.end() >= value.end();
                   });
        }
        ASSERT_TRUE(read || !good) << variable.address;
        ASSERT_EQ(scene.walls.isRefused(scene.group(), variable), !good) << variable.address;
    }
}

TEST(RequestWalls, FourPassesLearnAnything) {
    for (unsigned seed = 0; seed < 6000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RefusingController scene(seed);
        for (int change = 0; change < 3; ++change) {
            const Variables before = scene.below(2) == 0 ? scene.watched : Variables();
            scene.drawLimits();
            scene.watch(before + scene.drawnVariables(14, 80, scene.below(4) == 0 ? 20 : 3));
            for (int pass = scene.below(2); pass < 5; ++pass) {
                Requests requests = pass == 0 ? scene.otherMerge() : scene.plan();
                std::shuffle(requests.begin(), requests.end(), scene.random);
                scene.pass(requests);
            }
            ASSERT_NO_FATAL_FAILURE(expectLearnt(scene));
            scene.watch(scene.watched);
            ASSERT_TRUE(scene.pass(scene.plan())) << "the list was made anew";
        }
        // Every mark goes once the controller lets it, and nothing is kept of what nobody wants.
        scene.refused.clear();
        ReadGroup group = {0, 0};
        for (ElementRange range = {0, 0}; scene.walls.takeDueRetry(kRetryUs, &group, &range); scene.ask(range)) {
            ASSERT_LE(range.count, scene.limits.elementsPerRead);
        }
        scene.pass(scene.plan());
        ASSERT_NO_FATAL_FAILURE(expectLearnt(scene));
        scene.watch({});
        ASSERT_TRUE(scene.walls.of(scene.group()).walls.isEmpty());
    }
}

}  // namespace
