// What replies and writes leave in a cache, and where.
#include <climits>

#include "cache/Func_DealData.h"
#include "cache/host_values.h"
#include "cache/reply_storage.h"
#include "cache/written_values.h"
#include "support/driver_scene.h"

namespace {

using ValueCacheEntries = DriverScene;

TEST_F(ValueCacheEntries, KeysAndSizes) {
    const std::pair<ControlInformationM, unsigned int> elements[] = {
        {{1, 7, 100, -1}, 0x01070064},   {{257, 264, 65636, 0}, 0x01080064},      // only the low bytes count
        {{2, 6, 1, 0}, 0x02060001},      {{2, 12, 1, 0}, 0x020c0001},             // a bit, a word
        {{2, 13, 1, 0}, 0x020d0001},     {{2, 22, 1, 0}, 0x02160001},             // a double word, an unknown type
        {{-1, -1, -1, -1}, 0xffffffffU}, {{INT_MIN, 7, INT_MAX, 0}, 0x0007ffff},  // no element has it
    };
    const QMutexLocker lock(&PLC_driver.cacheMutex);
    PLC_driver.valueCache.insert({0x01070064}, bytes("3412"));
    for (auto [element, key] : elements) {
        EXPECT_EQ(ExtendFindSameVar(element), key);
    }
    EXPECT_EQ(cacheText(PLC_driver.valueCache),
              "0007ffff=0000 01070064=3412 01080064=0000 02060001=00 020c0001=0000 020d0001=00000000 "
              "02160001=0000 ffffffff=0000");
}

TEST(ReplyStorage, OneEntryForEachElementThatIsThere) {
    for (const TableRow &row : table(cases("cache/reply_storage", "replies"))) {
        const Protocol request = {QByteArray(), 0, 0, 3, row.number("length"), record(row["request"]), 0, 0, 0};
        ValueCache cache;
        storeReply(cache, request, bytes("01"));
        EXPECT_EQ(cacheText(cache), "") << "shorter than the offset: " << row.line();
        storeReply(cache, request, bytes("010302") + bytes(row["data"]));
        EXPECT_EQ(cacheText(cache), row["entries"]) << row.line();
    }
}

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
    RW_VAR pairs = record("12@5+0");
    setWrittenValues(pairs, bytes("785634120100000099"), 3);
    EXPECT_EQ(listText({pairs}), "12@5+2=7856341201000000") << "not what three would need";
    ValueCache cache;
    RW_VAR most = record("1@0+1048576=01");
    storeWritten(cache, most);
    EXPECT_EQ(cache.size(), 65536);
}

}  // namespace
