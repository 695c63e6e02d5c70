// The built library as a host of another compiler has it: opened by path, its entry points found by their plain names,
// the shared records read and written by byte offset only. The first figure of an offset is for 32-bit builds, the
// second for 64-bit builds.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QtCore/QHash>
#include <algorithm>
#include <cstring>
#include <fstream>

#include "korvel_dravo_port.h"

namespace {

// Words of ComInfo: the same in all builds.
enum { kMaxGroupLength = 4, kRetryTimes = 7, kRetryCount, kUseVarStation, kClearedWordA, kFrameTotal, kFrameDone };
enum { kClearedWordB = 13, kRemoteMode, kLocalNode, kCycleDone = 17, kHostContext, kSettingWords = 20 };

template <typename Value>
const Value &at(const void *record, size_t in32, size_t in64) {
    return *reinterpret_cast<const Value *>(static_cast<const char *>(record) + (sizeof(void *) == 4 ? in32 : in64));
}

#define ENTRY(name) (reinterpret_cast<decltype(name) *>(dlsym(library, #name)))

std::string calls;

class LoadedLibrary : public ::testing::Test {  // each has a driver in its first state
protected:
    ~LoadedLibrary() override { dlclose(library); }

    void SetUp() override {
        ASSERT_NE(driver, nullptr) << dlerror();
        EXPECT_EQ(at<int>(driver, 112, 176), 100) << "comType: nothing was built";
        std::fill(settings, settings + kSettingWords, -77);
        ENTRY(SetComInfo)(reinterpret_cast<ComInfo *>(settings));
        EXPECT_EQ(at<void *>(driver, 0, 0), static_cast<void *>(settings));
        for (int word = 0; word < kSettingWords; ++word) {
            EXPECT_EQ(settings[word], word == kClearedWordA || word == kClearedWordB ? 0 : -77) << word;
        }
        settings[kMaxGroupLength] = 32;
        settings[kUseVarStation] = 1;
        settings[kRetryTimes] = settings[kRetryCount] = settings[kRemoteMode] = settings[kCycleDone] = 0;
        settings[kLocalNode] = 3;
        const void *const context = settings;
        std::memcpy(&settings[kHostContext], &context, sizeof context);
    }
    /// Queues a read of two registers from address 100 of station 1.
    const void *request() const {
        RW_VAR var = {5, 6, 0, 0, 3, 0, QString(), QString(), 7, 100, 1, 2, 0, 0, QByteArray()};
        ENTRY(AddListOnceReadVar)(&var, 1);
        return ENTRY(ComCommunication)();
    }
    const void *reply(const char *hex) const {
        QByteArray bytes = QByteArray::fromHex(hex);
        return ENTRY(DataCom)(&bytes, bytes.size());
    }

    void *const library = dlopen(DRAVO_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    const void *const driver = dlsym(library, "PLC_driver");
    alignas(8) int settings[kSettingWords];
};

TEST_F(LoadedLibrary, EveryStatedNameIsFound) {
    std::ifstream stated(DRAVO_SYMBOLS);
    int found = 0;
    for (std::string kind, size, name; stated >> kind >> size >> name;) {
        found += kind != "soname" && dlsym(library, name.c_str()) != nullptr ? 1 : 0;
    }
    EXPECT_EQ(found, 15 + 4 + 14);  // entry points, data objects, utilities
    ENTRY(FlashLocalRegister)(1, 0x80000000U, 3);
    EXPECT_EQ(*static_cast<unsigned int *>(dlsym(library, "LW")), 0x80000000U);
    EXPECT_EQ(*static_cast<unsigned int *>(dlsym(library, "RWI")), 3U);
}

TEST_F(LoadedLibrary, GoodAndFailedExchange) {
    calls.clear();
    ENTRY(RegistCallBackFuncIntf)
    (
        [](void *context, int ownerId, int itemId, int code) {
            const int first = *static_cast<int *>(context);
            calls += QString::asprintf("%d: %d/%d %d, ", first, ownerId, itemId, code).toStdString();
        },
        [](QList<RW_VAR> *list, int ownerId, int code) {
            calls += QString::asprintf("list of %d: %d %d", list->size(), ownerId, code).toStdString();
        });
    const void *const sent = request();
    ASSERT_NE(sent, nullptr);
    EXPECT_EQ(at<QByteArray>(sent, 0, 0), QByteArray::fromHex("01030064000285d4"));
    EXPECT_EQ(at<int>(sent, 4, 8), 8) << "frameLength";
    EXPECT_EQ(at<int>(sent, 8, 12), 9) << "replyLength";
    EXPECT_EQ(at<int>(sent, 12, 16), 3) << "dataOffset";
    EXPECT_EQ(at<int>(sent, 16, 20), 4) << "dataLength";
    EXPECT_EQ(at<int>(sent, 20 + 36, 24 + 44), 100) << "address of var";
    EXPECT_EQ(at<int>(driver, 112, 176), 2) << "comType";
    EXPECT_EQ(at<int>(driver, 120, 184), 1) << "onceReadTimes";
    EXPECT_EQ(settings[kFrameTotal], 1);

    const void *const result = reply("010304000a01025a60");
    EXPECT_EQ(result, &at<char>(driver, 52, 104));
    EXPECT_EQ(at<int>(result, 20, 20), 1) << "retValue";
    EXPECT_EQ(at<int>(result, 0, 0), 5) << "ownerId";
    EXPECT_EQ(settings[kFrameDone], 1);
    EXPECT_EQ((at<QHash<unsigned int, QByteArray>>(driver, 132, 200).size()), 2);
    EXPECT_EQ(ENTRY(ComCommunication)(), nullptr);
    EXPECT_EQ(settings[kCycleDone], 1);

    ASSERT_NE(request(), nullptr);
    EXPECT_EQ(at<int>(reply(""), 20, 20), 46);  // no reply 40, ownerId 5, 1
    EXPECT_EQ(at<char>(driver, 128, 192), 1) << "comFailed";
    EXPECT_EQ(calls, "-77: 5/6 1, -77: 5/6 2, list of 0: 5 1");
}

// The host's entries are longer than the fields that the driver reads.
struct HostEntry {
    unsigned char bytes[8];
    QString addressText, label;
    int count, more[9];
};

TEST_F(LoadedLibrary, HostEntries) {
    const HostEntry entry0 = {{0xff, 7, 17}, QString::fromLatin1("300"), QString::fromLatin1("label"), 2, {-1, -1}};
    QList<HostEntry> entries = {entry0, entry0};
    entries[1].addressText = QString::fromLatin1("310");
    EXPECT_EQ(ENTRY(ReCreatReadVarList)(reinterpret_cast<QList<ReadVarEntry> *>(&entries)), 1);
    const void *const merged = &at<QList<RW_VAR>>(driver, 4, 8).at(0);
    EXPECT_EQ(at<int>(merged, 32, 40), 7) << "elemType";
    EXPECT_EQ(at<int>(merged, 36, 44), 300) << "address";
    EXPECT_EQ(at<int>(merged, 40, 48), 17) << "station";
    EXPECT_EQ(at<int>(merged, 44, 52), 12) << "count";
    EXPECT_EQ(at<QString>(merged, 24, 24), QString::fromLatin1("label"));
}

}  // namespace
