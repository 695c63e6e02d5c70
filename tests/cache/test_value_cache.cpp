#include "cache/value_cache.h"

#include <climits>

#include "support/record_text.h"

namespace {

TEST(ValueCache, KeysAndEntries) {
    const struct {
        const char *name;
        int station, type;
        qint64 address;
        unsigned int key;
        int entrySize;
    } elements[] = {
        {"word", 1, 7, 100, 0x01070064, 2},         {"only the low bytes count", 257, 264, 65636, 0x01080064, 2},
        {"last bit type", 2, 6, 1, 0x02060001, 1},  {"pair type has words", 2, 12, 1, 0x020c0001, 2},
        {"double word", 2, 13, 1, 0x020d0001, 4},   {"unknown type has words", 2, 22, 1, 0x02160001, 2},
        {"all below 0", -1, -1, -1, 0xffffffff, 2}, {"the extremes", INT_MIN, 7, INT_MAX, 0x0007ffff, 2},
    };
    ValueCache cache;
    cache.insert(0x01070064, bytes("3412"));
    for (const auto &element : elements) {
        EXPECT_EQ(findEntry(cache, element.station, element.type, element.address), element.key) << element.name;
        EXPECT_EQ(cache.value(element.key).size(), element.entrySize) << element.name;
    }
    EXPECT_EQ(cacheText(cache),
              "0007ffff=0000 01070064=3412 01080064=0000 02060001=00 020c0001=0000 020d0001=00000000 "
              "02160001=0000 ffffffff=0000");
}

TEST(ValueCache, RunsWrapAtTheLastAddress) {
    ValueCache cache;
    storeRun(cache, 1, 7, 65535, bytes("3412 7856 ff"));
    EXPECT_EQ(cacheText(cache), "01070000=7856 0107ffff=3412") << "the incomplete word is left out";
    QByteArray values = bytes("aa");
    appendRun(cache, 1, 7, 65535, 3, values);
    EXPECT_EQ(values, bytes("aa 3412 7856 0000"));
}

}  // namespace
