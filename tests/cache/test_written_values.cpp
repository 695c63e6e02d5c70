#include "cache/written_values.h"

#include "support/record_text.h"

namespace {

// Data are padded, never shortened.

TEST(WrittenValues, StoredAsRepliesAre) {
    for (const TableRow &row : table(cases("cache/written_values", "writes"))) {
        ValueCache cache;
        QList<RW_VAR> list = records(row["given"]);
        for (RW_VAR &var : list) {
            storeWritten(cache, var);
        }
        EXPECT_EQ(cacheText(cache), row["entries"]) << row.line();
        EXPECT_EQ(list.last().data, bytes(row["data afterwards"])) << row.line();
    }
    ValueCache cache;
    RW_VAR most = record("1@0+1048576=01");
    storeWritten(cache, most);
    EXPECT_EQ(cache.size(), 65536);
}

}  // namespace
