// What requests become on their way into the lists: pieces, parts at the bounds of the address map, entries of a queue.
#include "support/record_text.h"
#include "vars/request_merge.h"
#include "vars/request_pieces.h"
#include "vars/request_queue.h"

namespace {

// Owner of a piece: the index of its first element.

TEST(RequestPieces, FollowOneAnotherWithoutGapUpToTheLastAddress) {
    expectColumn(cases("vars/request_pieces", "pieces"), "pieces", [](const TableRow &row) {
        QList<RW_VAR> list;
        const int limit = row.number("limit"), step = row.number("step");
        for (const Piece &piece : piecesOf(row.number("address"), std::stoll(row["count"]), limit, step)) {
            list.append(pieceOf(record("7@0+0"), piece));
            list.last().ownerId = piece.first;
        }
        return listText(list);
    });
}

TEST(RequestPieces, WhetherGroupLeavesTheLastPieceInTheRecord) {
    expectColumn(cases("vars/request_pieces", "whether group"), "pieces", [](const TableRow &row) {
        QList<RW_VAR> list;
        RW_VAR var = record("8@10+5");
        WhetherGroup(row.number("count"), row.number("limit"), &var, &list);
        EXPECT_TRUE(list.isEmpty() || listText({var}) == listText({list.last()})) << listText({var});
        return listText(list);
    });
}

typedef void (*Cut)(QList<RW_VAR> &list, RW_VAR &var);

const int kListBounds[24] = {0, 0, 2048, 256, 1024, 256, 256, 0, 256, 256, 0, 0, 0, 256};  // by type; 0: never cut
const int kMapBounds[24] = {0, 0, 2048, 256, 1024, 256, 256, 8000, 256, 256, 0, 0, 8000, 256, 256};

// Whether it revises the last request of the list, here of one element, and where it cuts.
const std::tuple<const char *, Cut, bool, const int *> kCutters[] = {
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

/// What a request becomes behind the entries of a list; the record ends as the last part.
std::string entries(Cut cut, const std::string &given, const std::string &behind = "") {
    RW_VAR var = record(given);
    QList<RW_VAR> list = records(behind);
    cut(list, var);
    EXPECT_EQ(var.address, list.last().address);
    EXPECT_EQ(var.count, list.last().count);
    return listText(list);
}

TEST(RequestMerge, PartsCarryTheirDataAndARevisedEntryItsOwner) {
    expectColumn(cases("vars/request_merge", "writes"), "entries",
                 [](const TableRow &row) { return entries(function_rw_var_add_write, row["given"]); });
    EXPECT_EQ(entries(function_rw_var_revise, "13@255+2147483647:9/0", "1@5+5 13@255+1:1/1"),
              "1@5+5 13@255+1:1/1 13@256+2147483646:9/0");
    EXPECT_EQ(entries(function_rw_var_revise, "13@256+3:8/0", "1@5+5 13@256+1:9/0"), "1@5+5 13@256+3:9/0");
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
    QList<RW_VAR> reads = records(QByteArray("7@1+1 ").repeated(1023).toStdString()), more = reads, writes = reads;
    EXPECT_EQ(sizeWith(reads, "8@250+10"), 1025) << "one piece, two entries";
    EXPECT_EQ(sizeWith(more, "7@100+64"), 1024);
    for (const char *text : {"7@5+1=ff", "7@6+1=dd", "7@5+1=ee"}) {
        appendOrReplaceWrite(writes, record(text));
        EXPECT_EQ(writes.size(), 1024) << text;
    }
    EXPECT_EQ(listText({writes.last()}), "7@5+1=ee");
}

TEST(RequestQueue, WritesReplaceQueuedWritesButTheHead) {
    expectColumn(cases("vars/request_queue", "writes"), "afterwards", [](const TableRow &row) {
        QList<RW_VAR> queue = records(row["queue"]);
        appendOrReplaceWrite(queue, record(row["given"]));
        return listText(queue);
    });
}

}  // namespace
