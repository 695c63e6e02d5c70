// What requests become on their way into the lists: pieces, parts at the bounds of the address map, entries of a queue.
#include <climits>

#include "support/record_text.h"
#include "vars/request_merge.h"
#include "vars/request_pieces.h"
#include "vars/request_queue.h"
#include "vars/write_cut.h"

namespace {

/// "100+32#0 132+8#32": address, count and index of the first element of each piece.
std::string piecesText(const Pieces &pieces) {
    std::string text;
    for (const Piece &piece : pieces) {
        const std::string run = std::to_string(piece.address) + "+" + std::to_string(piece.count);
        text += (text.empty() ? "" : " ") + run + "#" + std::to_string(piece.first);
    }
    return text;
}

TEST(RequestPieces, FollowOneAnotherWithoutGapUpToTheLastAddress) {
    for (const TableRow &row :
         table(cases("vars/request_pieces", "follow one another without gap up to the last address"))) {
        const Pieces pieces =
            piecesOf(row.number("address"), row.number("count"), row.number("limit"), row.number("step"));
        EXPECT_EQ(piecesText(pieces), row["pieces"]) << row.line();
    }
    EXPECT_EQ(piecesText(piecesOf(INT_MIN, 4294967296, INT_MAX)),
              "-2147483648+2147483647#0 -1+2147483647#2147483647 2147483646+2#2147483647");
}

TEST(RequestPieces, WhetherGroupLeavesTheLastPieceInTheRecord) {
    for (const TableRow &row :
         table(cases("vars/request_pieces", "whether group leaves the last piece in the record"))) {
        QList<RW_VAR> list;
        RW_VAR var = record("8@10+5");
        WhetherGroup(row.number("count"), row.number("limit"), &var, &list);
        EXPECT_EQ(listText(list), row["pieces"]) << row.line();
        EXPECT_TRUE(list.isEmpty() || listText({var}) == listText({list.last()})) << listText({var});
    }
}

typedef void (*Cut)(QList<RW_VAR> &list, RW_VAR &var);

const int kListBounds[24] = {0, 0, 2048, 256, 1024, 256, 256, 0, 256, 256, 0, 0, 0, 256};  // by type; 0: never cut
const int kMapBounds[24] = {0, 0, 2048, 256, 1024, 256, 256, 8000, 256, 256, 0, 0, 8000, 256, 256};

const struct {
    const char *name;
    Cut cut;
    bool revises;  // the last request, here of one element
    const int *bounds;
} kCutters[] = {
    {"function_rw_var_add_read", function_rw_var_add_read, false, kListBounds},
    {"function_rw_var_add_write", function_rw_var_add_write, false, kListBounds},
    {"function_rw_var_revise", function_rw_var_revise, true, kListBounds},
    {"appendDriverRead", [](auto &list, auto &var) { appendDriverRead(list, var); }, false, kMapBounds},
    {"reviseDriverRead", [](auto &list, auto &var) { reviseDriverRead(list, var); }, true, kMapBounds},
};

std::string request(int type, int address, int count) {
    return std::to_string(type) + "@" + std::to_string(address) + "+" + std::to_string(count);
}

TEST(RequestMerge, EveryTypeIsCutExactlyAtItsBound) {
    for (const auto &[name, cut, revises, bounds] : kCutters) {
        for (int type = -1; type < 23; ++type) {
            for (const int bound : {256, 1024, 2048, 8000}) {
                for (const auto &[address, count] : {std::pair(bound - 2, 2), {bound - 2, 3}, {bound, 3}}) {
                    const bool isCut = bounds[type < 0 ? 23 : type] == bound && address < bound && count == 3;
                    const std::string given = request(type, address, count);
                    const std::string parts = request(type, bound - 2, 2) + " " + request(type, bound, 1);
                    RW_VAR var = record(given);
                    QList<RW_VAR> list = records(revises ? request(type, address, 1) : "");
                    cut(list, var);
                    list.last().data.clear();
                    EXPECT_EQ(listText(list), isCut ? parts : given) << name;
                }
            }
        }
    }
}

/// What a request becomes behind the entries of list; the record ends as the last part.
std::string entries(Cut cut, const std::string &given, const std::string &behind = "") {
    RW_VAR var = record(given);
    QList<RW_VAR> list = records(behind);
    cut(list, var);
    EXPECT_EQ(var.address, list.last().address);
    EXPECT_EQ(var.count, list.last().count);
    return listText(list);
}

TEST(RequestMerge, NothingOverflows) {
    expectColumn(cases("vars/request_merge", "nothing overflows"), "entries",
                 [](const TableRow &row) { return entries(function_rw_var_add_read, row["given"]); });
}

TEST(RequestMerge, RevisedEntryKeepsEverythingButItsCount) {
    EXPECT_EQ(entries(function_rw_var_revise, "13@255+2147483647:9/0", "1@5+5 13@255+1:1/1"),
              "1@5+5 13@255+1:1/1 13@256+2147483646:9/0");
    EXPECT_EQ(entries(function_rw_var_revise, "13@256+3:8/0", "1@5+5 13@256+1:9/0"), "1@5+5 13@256+3:9/0");
}

TEST(WriteCut, ListFunctionCutsDataWithTheRequest) {
    expectColumn(cases("vars/write_cut", "list function cuts data with the request"), "entries",
                 [](const TableRow &row) { return entries(function_rw_var_add_write, row["given"]); });
}

TEST(WriteCut, DriverCutsAtEveryBoundOfTheAddressMap) {
    expectColumn(cases("vars/write_cut", "driver cuts at every bound of the address map"), "entries",
                 [](const TableRow &row) {
                     QList<RW_VAR> list;
                     appendDriverWrite(list, record(row["given"]));
                     return listText(list);
                 });
}

QList<RW_VAR> filled(int entries) {
    return records(QByteArray("7@1+1 ").repeated(entries).toStdString());
}

/// The size of the queue after a one-shot read was asked for, in pieces of at most 32.
int sizeWith(QList<RW_VAR> &queue, const std::string &read) {
    RW_VAR var = record(read);
    appendOnceRead(queue, var, var.count, 32);
    return queue.size();
}

TEST(RequestQueue, IdentityOfAOnceRead) {
    QList<RW_VAR> queue;
    int size = 0;
    for (const char *text : {"7@100+5:1/2", "7@101+5:1/2", "7@100+4:1/2", "8@100+5:1/2", "2/7@100+5:1/2", "7@100+5:2/2",
                             "7@100+5:1/3", "7@100+5:1/2^1"}) {
        EXPECT_EQ(sizeWith(queue, text), ++size) << text;
        EXPECT_EQ(sizeWith(queue, text), size) << text << " again; the head counts";
    }
    EXPECT_EQ(sizeWith(queue, "3@250+10"), 10) << "an entry is compared with the piece before it is cut at a bound";
    EXPECT_EQ(sizeWith(queue, "3@250+10"), 12);
    EXPECT_EQ(sizeWith(queue, "3@250+6"), 12);
}

TEST(RequestQueue, FullQueuesTakeNothingButReplacements) {
    QList<RW_VAR> reads = filled(1023), more = reads, writes = reads;
    EXPECT_EQ(sizeWith(reads, "8@250+10"), 1025) << "one piece, two entries";
    EXPECT_EQ(sizeWith(more, "7@100+64"), 1024);
    for (const char *text : {"7@5+1=ff", "7@6+1=dd", "7@5+1=ee"}) {
        appendOrReplaceWrite(writes, record(text));
        EXPECT_EQ(writes.size(), 1024) << text;
    }
    EXPECT_EQ(listText({writes.last()}), "7@5+1=ee");
}

TEST(RequestQueue, WritesReplaceQueuedWritesButTheHead) {
    expectColumn(cases("vars/request_queue", "writes replace queued writes but the head"), "afterwards",
                 [](const TableRow &row) {
                     QList<RW_VAR> queue = records(row["queue"]);
                     appendOrReplaceWrite(queue, record(row["given"]));
                     return listText(queue);
                 });
}

}  // namespace
