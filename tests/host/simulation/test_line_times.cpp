// How the simulated line keeps time, without a clock: bytes on the wire, and when controllers answer.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "host/simulation/answer_times.h"
#include "support/table.h"

namespace {

using namespace simulation;
using std::chrono::microseconds;

TEST(PacedBytes, TakeTheirTimeAndKeepTheirOrderWhoeverLooks) {
    constexpr microseconds kCharacter{95};
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        PacedBytes wire(kCharacter);
        Clock::time_point now{std::chrono::hours(1)};
        Clock::time_point freeAt = now;
        std::map<int, Clock::time_point> waiting;  // dues by frame; a frame is its number, repeated
        int current = 0;
        int left = 0;
        for (int step = 0; step < 60 || !wire.isEmpty(); ++step) {
            if (step < 60 && random() % 3 == 0) {
                waiting[step] = now + microseconds(random() % 20000) - microseconds(left > 0 ? 10000 : 0);
                wire.put(Bytes(std::size_t(1 + step % 40), std::uint8_t(step)), waiting[step]);
            }
            now = std::min(wire.nextDue(), now + microseconds(1 + random() % 8000));
            const Bytes got = wire.take(now);
            for (const int byte : got) {
                if (left == 0) {
                    const auto due = waiting[current = byte];
                    EXPECT_TRUE(std::all_of(waiting.begin(), waiting.end(), [&](auto &w) { return due <= w.second; }));
                    freeAt = std::max(freeAt, due);
                    left = 1 + byte % 40;
                    waiting.erase(byte);
                }
                EXPECT_EQ(byte, current) << "between two others";
                EXPECT_LE(freeAt += kCharacter, now) << "before it can be through";
                --left;
            }
            EXPECT_TRUE(got.empty() || now - freeAt < (left > 0 ? kCharacter : microseconds(1))) << "held back";
        }
        EXPECT_TRUE(waiting.empty() && left == 0 && wire.lastByte() == freeAt);
    }
}

TEST(AnswerTimes, AddUpAsTheOptionsSay) {
    // Microseconds from the end of the requests, two of station 1 at once and a third that is answered late.
    expectColumn(R"(
        baud    | bits | turnarounds | delay | paced | answers
        1000    | 10   | 5           | 0     | 1     | 40000 45000 90000
        1000    | 12   | 7,2:9       | 0     | 1     | 49000 56000 90000
        19200   | 12   | 0           | 0     | 1     | 2187 2187 90000
        19201   | 12   | 0,1:60000   | 0     | 1     | 60001750 120001750 180001750
        4000000 | 10   | 2:9         | 100   | 1     | 106750 111750 190000
        1000    | 10   | 0~60000,1:9 | 0     | 1     | 44000 53000 90000
        1000    | 10   | 9           | 7     | 0     | 7000 7000 97000)",
                 "answers", [](const TableRow &row) {
                     SimulatedLineOptions options;
                     options.lateBy = std::chrono::milliseconds(90);
                     options.baud = row.number("baud");
                     options.bitsPerCharacter = row.number("bits");
                     options.delay = std::chrono::milliseconds(row.number("delay"));
                     options.paced = row.number("paced") == 1;
                     EXPECT_TRUE(parseTurnarounds(row["turnarounds"], &options).isEmpty());
                     AnswerTimes times(options);
                     std::string answers;
                     for (const bool late : {false, false, true}) {
                         const auto begin = times.begin(1, Clock::time_point(), late).time_since_epoch();
                         answers += (answers.empty() ? "" : " ") + std::to_string(begin / microseconds(1));
                     }
                     return answers;
                 });
    SimulatedLineOptions options;
    EXPECT_TRUE(parseTurnarounds("3:8~4", &options).isEmpty());
    AnswerTimes times(options);
    std::set<qint64> drawn;
    for (int hour = 1; hour <= 1000; ++hour) {
        const Clock::time_point asked{std::chrono::hours(hour)};
        drawn.insert((times.begin(3, asked, false) - asked - frameGap(options) + microseconds(500)) /
                     microseconds(1000));
    }
    EXPECT_EQ(drawn, (std::set<qint64>{8, 9, 10, 11, 12})) << "both ends of 8 and up to 4 more";
    const QStringList faults = parseTurnarounds("1:2,1:3,60001,0:5,248:5,5~60001,-1,,2:,x", &options);
    EXPECT_EQ(faults.size(), 9) << faults.join('\n').toStdString();
    EXPECT_EQ(options.turnaroundOf.size(), 1U);
}

}  // namespace
