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
    expectColumn(cases("vars/request_pieces", "follow one another without gap up to the last address"), "pieces",
                 [](const TableRow &row) {
                     return piecesText(
                         piecesOf(row.number("address"), row.number("count"), row.number("limit"), row.number("step")));
                 });
    EXPECT_EQ(piecesText(piecesOf(INT_MIN, 4294967296, INT_MAX)),
              "-2147483648+2147483647#0 -1+2147483647#2147483647 2147483646+2#2147483647");
}

TEST(RequestPieces, WhetherGroupLeavesTheLastPieceInTheRecord) {
    expectColumn(cases("vars/request_pieces", "whether group leaves the last piece in the record"), "pieces",
                 [](const TableRow &row) {
                     QList<RW_VAR> list;
                     RW_VAR var = record("8@10+5");
                     WhetherGroup(row.number("count"), row.number("limit"), &var, &list);
                     EXPECT_TRUE(list.isEmpty() || listText({var}) == listText({list.last()})) << listText({var});
                     return listText(list);
                 });
}

}  // namespace
