#include "cache/host_values.h"

#include "cache/written_values.h"
#include "support/record_text.h"

namespace {

TEST(HostValues, Read) {
    ValueCache cache;
    for (RW_VAR var : records("7@10+4=0201040306050807 13@5+2=1122334455667788 1@7+3=05")) {
        storeWritten(cache, var);
    }
    for (const TableRow &row : table(cases("cache/host_values", "reads"))) {
        const RW_VAR var = record(row["variable"]);
        EXPECT_EQ(cachedValues(cache, var.elemType, var.station, var.address, var.count), bytes(row["values"]))
            << row.line();
    }
    EXPECT_EQ(cachedValues(cache, 22, 1, 1, kMaxElementCount).size(), 2 * kMaxElementCount);
    cache.clear();
    cachedValues(cache, 20, 1, 31, 2);
    cachedValues(cache, 14, 1, 8, 1);
    cachedValues(cache, 22, 1, 1, 2);
    EXPECT_EQ(cacheText(cache), "01080008=0000 01080009=0000 01130001=0000 01130002=0000") << "asked for, so created";
}

TEST(HostValues, WrittenRecordsHoldExactlyWhatTheirCountNeeds) {
    expectColumn(cases("cache/host_values", "written records hold exactly what their count needs"), "record",
                 [](const TableRow &row) {
                     const RW_VAR given = record(row["given"]);
                     RW_VAR written = given;
                     setWrittenValues(written, given.data, given.count);
                     return listText({written});
                 });
}

}  // namespace
