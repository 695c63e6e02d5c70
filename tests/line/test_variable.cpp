// What a user writes and what is shown of it: the elements of a variable, what is known of each of its values, results
// in words.
#include <gtest/gtest.h>

#include "line/desk.h"
#include "line/value_states.h"
#include "support/table.h"

namespace {

TEST(Variable, IsResolvedToTheElementsOfItsRegisterType) {
    for (const TableRow &row : table(R"(
        name                      | type | address | count | elements | first bit | driver count
        octal bit                 |  1   | 17      | 3     | 1@15+3   | 0         | 3
        register                  |  7   | 100     | 2     | 7@100+2  | 0         | 2
        pair of registers         | 14   | 300     | 2     | 8@300+4  | 0         | 4
        double register           | 13   | 5       | 2     | 13@5+2   | 0         | 4
        bits over two words       | 16   | 2.15    | 2     | 8@2+2    | 15        | 2
        bits of a later word      | 20   | 2.20    | 12    | 19@3+1   | 4         | 12)")) {
        const dravo::Variable made = variable(1, row.number("type"), row["address"], row.number("count"));
        const dravo::Elements &elements = made.elements;
        EXPECT_EQ(QString("%1@%2+%3").arg(elements.elemType).arg(elements.address).arg(elements.count),
                  QString(row["elements"]))
            << row.line();
        EXPECT_EQ(made.firstBit, row.number("first bit")) << row.line();
        EXPECT_EQ(made.driverCount, row.number("driver count")) << row.line();
    }
}

// Type 7, station 1: 100 to 109 read at 1 s, 110 to 119 at 4 s and failing since, 120 to 129 failed only.
TEST(ValueStates, FollowTheRequestsThatCoverAVariable) {
    dravo::ValueStates states;
    states.readFinished({1, 7, 100, 10}, true, 1, 0, 1000);
    states.readFinished({1, 7, 110, 10}, true, 1, 0, 4000);
    states.readFinished({1, 7, 110, 10}, false, 71, 2, 4500);
    states.readFinished({1, 7, 120, 10}, false, 41, 0, 4600);
    for (const TableRow &row : table(R"(
        name                                 | type | address | count | condition  | code | age  | values read
        before the first request             |  7   | 99      | 1     | never read | 0    | -1   | 0
        first element                        |  7   | 100     | 1     | stale      | 0    | 4000 | 1
        across a gap at the start            |  7   | 98      | 4     | never read | 0    | -1   | 0011
        over two requests, one failing       |  7   | 109     | 2     | failing    | 71   | 4000 | 11
        partly never read                    |  7   | 119     | 2     | failing    | 71   | -1   | 10
        32-bit value over two requests       | 12   | 119     | 1     | failing    | 71   | -1   | 0
        second of two 32-bit values not read | 12   | 117     | 2     | failing    | 71   | -1   | 10
        bits of two words                    | 15   | 99.15   | 2     | never read | 0    | -1   | 01
        bits of one word                     | 15   | 100.14  | 2     | stale      | 0    | 4000 | 11
        another type                         |  8   | 100     | 1     | never read | 0    | -1   | 0)")) {
        const dravo::ValueState state =
            states.stateOf(variable(1, row.number("type"), row["address"], row.number("count")), 5000, 3000);
        EXPECT_EQ(dravo::conditionName(state.condition), QString(row["condition"])) << row.line();
        EXPECT_EQ(state.code, row.number("code")) << row.line();
        EXPECT_EQ(state.ageUs, row.number("age")) << row.line();
        std::string read;
        for (const bool known : state.valuesRead) {
            read += known ? '1' : '0';
        }
        EXPECT_EQ(read, row.text("values read")) << row.line();
    }
}

TEST(ResultCodes, AreNamedWhateverTheOwnerAddsToThem) {
    for (const TableRow &row : table(R"(
        codes                          | exception | text
        1, 100                         | 0         | good
        0                              | 0         | bad reply, sent again
        11,22,71,82,111,122,171,182    | 0         | damaged reply
        41,52,141,152                  | 0         | no reply
        71                             | 2         | refused: illegal data address (exception 2)
        71                             | 11        | refused: gateway target does not respond (exception 11)
        71                             | 99        | refused: unknown exception (exception 99)
        23,40,-1                       | 0         | unknown result code %1)")) {
        for (const QString &code : QString(row["codes"]).split(',')) {
            const QString text = QString(row["text"]).replace("%1", code);
            EXPECT_EQ(dravo::describeResult(code.toInt(), row.number("exception")), text) << row.line();
        }
    }
}

}  // namespace
