#include "codec/write_request.h"

#include "support/record_text.h"

namespace {

TEST(WriteRequest, FramesOfEveryClass) {
    for (const TableRow &row : table(cases("codec/write_request", "writes"))) {
        SCOPED_TRACE(row.line());
        const RW_VAR var = record(row["variable"]);
        expectRequest(writeRequest(var), var, withCrc(row["frame without CRC"]), var.station == 0 ? 0 : 8, 0, 0);
    }
    EXPECT_EQ(writeRequest(record("7@100+1=3412")).frame, bytes("010600641234c562"));
}

TEST(WriteRequest, ValuesEndAtTheLargestCount) {
    EXPECT_EQ(writeRequest(record("7@0+2147483647")).frame.size(), 9 + 2 * kMaxElementCount);
    EXPECT_EQ(writeRequest(record("13@0+1048577")).frame.size(), 9 + 4 * kMaxElementCount);
}

}  // namespace
