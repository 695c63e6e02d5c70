// What is shown of a variable: what is known of each of its values, and results in words.
#include <gtest/gtest.h>

#include "line/desk.h"
#include "line/value_states.h"
#include "support/table.h"

namespace {

// Type 7, station 1: 100 to 109 read at 1 s, 110 to 119 at 4 s and failing since, 120 to 129 failed only;
// 130 to 135 in two reads.
TEST(ValueStates, FollowTheRequestsThatCoverAVariable) {
    dravo::ValueStates states;
    states.readFinished({1, 7, 100, 10}, true, 1, 0, 1000);
    states.readFinished({1, 7, 110, 10}, true, 1, 0, 4000);
    states.readFinished({1, 7, 110, 10}, false, 71, 2, 4500);
    states.readFinished({1, 7, 120, 10}, false, 41, 0, 4600);
    states.readFinished({1, 7, 130, 3}, true, 1, 0, 4900);
    states.readFinished({1, 7, 133, 3}, true, 1, 0, 4900);
    const auto shown = [&states](const TableRow &row) {
        const dravo::ValueState state =
            states.stateOf(variable(1, row.number("type"), row["address"], row.number("count")), 5000, 3000);
        std::string read;
        for (const bool known : state.valuesRead) {
            read += known ? '1' : '0';
        }
        const QString text = dravo::conditionName(state.condition);
        return QString("%1, %2, %3, ").arg(text).arg(state.code).arg(state.ageUs).toStdString() + read;
    };
    expectColumn(R"(
        name                                 | type | address | count | condition, code, age, values read
        across a gap at the start            |  7   | 98      | 4     | never read, 0, -1, 0011
        over two requests, one failing       |  7   | 109     | 2     | failing, 71, 4000, 11
        second of two 32-bit values not read | 12   | 117     | 2     | failing, 71, -1, 10
        32-bit value out of two reads        | 12   | 130     | 2     | stale, 0, 100, 11
        bits of two words                    | 15   | 99.15   | 2     | never read, 0, -1, 01
        bits of one word                     | 15   | 100.14  | 2     | stale, 0, 4000, 11
        another type                         |  8   | 100     | 1     | never read, 0, -1, 0)",
                 "condition, code, age, values read", shown);
}

TEST(ResultCodes, AreNamedWhateverTheOwnerAddsToThem) {
    expectColumn(R"(
        code | exception | text
        100  | 0         | good
        0    | 0         | bad reply, sent again
        111  | 0         | damaged reply
        182  | 0         | damaged reply
        40   | 0         | unknown result code 40
        71   | 11        | refused: gateway target does not respond (exception 11)
        71   | 99        | refused: unknown exception (exception 99))",
                 "text", [](const TableRow &row) {
                     return dravo::describeResult(row.number("code"), row.number("exception")).toStdString();
                 });
}

}  // namespace
