// What is known of a variable follows from the requests that cover it, through the elements it was resolved to.
#include "host/tags/value_states.h"

#include <gtest/gtest.h>

#include "host/tags/request_statistics.h"
#include "support/table.h"

namespace {

Variable usable(int elemType, const char *address, int count) {
    Variable variable;
    variable.elemType = elemType;
    variable.addressText = address;
    variable.count = count;
    EXPECT_TRUE(resolve(&variable).isEmpty()) << elemType << ' ' << address;
    return variable;
}

TEST(Variable, IsResolvedToTheElementsOfItsRegisterType) {
    for (const TableRow &row : table(R"(
        name                      | type | address | count | range    | first bit | driver count
        octal bit                 |  1   | 17      | 3     | 1@15+3   | 0         | 3
        register                  |  7   | 100     | 2     | 7@100+2  | 0         | 2
        pair of registers         | 14   | 300     | 2     | 8@300+4  | 0         | 4
        double register           | 13   | 5       | 2     | 13@5+2   | 0         | 4
        bits over two words       | 16   | 2.15    | 2     | 8@2+2    | 15        | 2
        bits of a later word      | 20   | 2.20    | 12    | 19@3+1   | 4         | 12)")) {
        const Variable variable = usable(row.number("type"), row["address"], row.number("count"));
        const ElementRange &range = variable.range;
        EXPECT_EQ(
            std::to_string(range.elemType) + '@' + std::to_string(range.address) + '+' + std::to_string(range.count),
            row.text("range"))
            << row.line();
        EXPECT_EQ(variable.firstBit, row.number("first bit")) << row.line();
        EXPECT_EQ(variable.driverCount, row.number("driver count")) << row.line();
    }
}

// Type 7, station 1: 100 to 109 read at 1000 ms, 110 to 119 at 4000 ms and failing since, 120 to 129 failed only.
TEST(ValueStates, FollowTheRequestsThatCoverAVariable) {
    ValueStates states;
    const auto stateOf = [&](const Variable &variable) { return states.stateOf(variable, 5000, 3000); };
    const Variable last = usable(7, "119", 1);
    states.finished({1, 7, 100, 10}, kResultGood, 0, 1000);
    states.finished({1, 7, 110, 10}, kResultGood, 0, 4000);
    EXPECT_EQ(stateOf(last).condition, Condition::Fresh);
    states.finished({1, 7, 110, 10}, 71, 2, 4500);
    states.finished({1, 7, 120, 10}, 41, 0, 4600);
    for (const TableRow &row : table(R"(
        name                                 | type | address | count | condition  | age  | values read
        before the first request             |  7   | 99      | 1     | never read | -1   | 0
        first element                        |  7   | 100     | 1     | stale      | 4000 | 1
        across a gap at the start            |  7   | 98      | 4     | never read | -1   | 0011
        over two requests, one failing       |  7   | 109     | 2     | failing    | 4000 | 11
        partly never read                    |  7   | 119     | 2     | failing    | -1   | 10
        32-bit value over two requests       | 12   | 119     | 1     | failing    | -1   | 0
        second of two 32-bit values not read | 12   | 117     | 2     | failing    | -1   | 10
        bits of two words                    | 15   | 99.15   | 2     | never read | -1   | 01
        bits of one word                     | 15   | 100.14  | 2     | stale      | 4000 | 11
        another type                         |  8   | 100     | 1     | never read | -1   | 0)")) {
        const ValueState state = stateOf(usable(row.number("type"), row["address"], row.number("count")));
        EXPECT_EQ(conditionName(state.condition), QString(row["condition"])) << row.line();
        EXPECT_EQ(state.ageMs, row.number("age")) << row.line();
        std::string read;
        for (const bool known : state.valuesRead) {
            read += known ? '1' : '0';
        }
        EXPECT_EQ(read, row.text("values read")) << row.line();
    }
    EXPECT_EQ(stateOf(last).code, 71);
    EXPECT_EQ(stateOf(last).exceptionCode, 2);
    states.finished({1, 7, 110, 10}, kResultGood, 0, 5000);
    EXPECT_EQ(stateOf(last).condition, Condition::Fresh);
    EXPECT_EQ(states.stateOf(last, 8000, 3000).condition, Condition::Fresh);
    EXPECT_EQ(states.stateOf(last, 8001, 3000).condition, Condition::Stale);
}

TEST(RequestStatistics, CountsEachFailureUnderOneKind) {
    RequestStatistics statistics;
    for (const int code : {1, 100, 0, 0}) {
        statistics.judged(code, 0);
    }
    EXPECT_FALSE(statistics.anyFailed()) << "good, or sent again";
    statistics.judged(0, 6);   // refused, but to be sent again
    statistics.judged(71, 2);  // the reply of another length was an exception
    for (const int code : {41, 52, 71, 72, 82, 11, 12, 13, 122}) {
        statistics.judged(code, 0);
    }
    EXPECT_TRUE(statistics.anyFailed());
    EXPECT_EQ(statistics.line(),
              QString("retries 3   failed requests: no reply 2  wrong length 3  rejected 4  exception 1"));
}

}  // namespace
