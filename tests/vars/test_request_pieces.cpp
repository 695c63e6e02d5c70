#include "vars/request_pieces.h"

#include <climits>

#include "support/record_text.h"

namespace {

/// "100+32#0 132+8#32": address, count and index of the first element of each piece.
std::string piecesText(const Pieces &pieces) {
    std::string text;
    for (const Piece &piece : pieces) {
        text += (text.empty() ? "" : " ") + std::to_string(piece.address) + "+" + std::to_string(piece.count) + "#" +
                std::to_string(piece.first);
    }
    return text;
}

TEST(RequestPieces, FollowOneAnotherWithoutGapUpToTheLastAddress) {
    const char kCases[] = R"(
        run                              | address    | count | limit       | step | pieces
        as long as the limit             | 100        |    32 | 32          |    1 | 100+32#0
        one more                         | 100        |    33 | 32          |    1 | 100+32#0 132+1#32
        two registers an element         | 100        |     5 | 2           |    2 | 100+2#0 104+2#2 108+1#4
        fewer than none                  | 100        |    -5 | 32          |    1 |
        limit below 1 is 1               | 100        |     2 | -2147483648 |    1 | 100+1#0 101+1#1
        limit far above                  | 100        |    70 | 2147483647  |    1 | 100+70#0
        piece beyond the last address    | 2147483644 |    10 | 2           |    1 | 2147483644+2#0 2147483646+2#2
        element beyond it, in two steps  | 2147483646 |     3 | 1           |    2 | 2147483646+1#0)";
    expectColumn(kCases, "pieces", [](const TableRow &row) {
        return piecesText(
            piecesOf(row.number("address"), row.number("count"), row.number("limit"), row.number("step")));
    });
    EXPECT_EQ(piecesText(piecesOf(INT_MIN, 4294967296, INT_MAX)),
              "-2147483648+2147483647#0 -1+2147483647#2147483647 2147483646+2#2147483647");
}

TEST(RequestPieces, WhetherGroupLeavesTheLastPieceInTheRecord) {
    const char kCases[] = R"(
        request                        | count   | limit   | pieces
        no rest                        | 64      | 32      | 8@10+32 8@42+32
        type's own bound does not cut  | 300     | 250     | 8@10+250 8@260+50
        within the limit, unchanged    | 32      | 32      | 8@10+5
        limit below 1 is 1             | 2       | -5      | 8@10+1 8@11+1
        as many as there can be        | 1048576 | 1048575 | 8@10+1048575 8@1048585+1
        one more                       | 1048577 | 1048575 |)";
    expectColumn(kCases, "pieces", [](const TableRow &row) {
        QList<RW_VAR> list;
        RW_VAR var = record("8@10+5");
        WhetherGroup(row.number("count"), row.number("limit"), &var, &list);
        EXPECT_TRUE(list.isEmpty() || listText({var}) == listText({list.last()})) << listText({var});
        return listText(list);
    });
}

}  // namespace
