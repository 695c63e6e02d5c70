#include "vars/request_queue.h"

#include "support/record_text.h"

namespace {

QList<RW_VAR> filled(int entries) {
    QList<RW_VAR> queue;
    while (queue.size() < entries) {
        queue.append(record("7@1+1"));
    }
    return queue;
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
    queue.clear();
    EXPECT_EQ(sizeWith(queue, "3@250+10"), 2) << "an entry is compared with the piece before it is cut at a bound";
    EXPECT_EQ(sizeWith(queue, "3@250+10"), 4);
    EXPECT_EQ(sizeWith(queue, "3@250+6"), 4);
}

TEST(RequestQueue, FullQueuesTakeNothingButReplacements) {
    QList<RW_VAR> reads = filled(1023);
    EXPECT_EQ(sizeWith(reads, "8@250+10"), 1025) << "one piece, two entries";
    reads = filled(1023);
    EXPECT_EQ(sizeWith(reads, "7@100+64"), 1024);
    QList<RW_VAR> writes = filled(1023);
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
