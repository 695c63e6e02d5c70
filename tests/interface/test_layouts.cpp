// The records that host and driver share, read and written by byte offset only: a host built by another compiler sees
// nothing else. The first figure of an offset is for 32-bit builds, the second for 64-bit builds.
#include <gtest/gtest.h>

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <cstring>
#include <string>
#include <vector>

#include "korvel_dravo_port.h"
#include "loaded_library.h"

namespace {

struct Offset {
    size_t in32;
    size_t in64;
    operator size_t() const { return sizeof(void *) == 4 ? in32 : in64; }
};

namespace at_driver {
const Offset comInfo{0, 0}, readVarList{4, 8}, onceReadVarList{12, 24}, spareVarList{16, 32}, protocolList{20, 40},
    extendVars{24, 48}, varCallBack{28, 56}, listCallBack{32, 64}, stationMap{48, 96}, retVar{52, 104},
    comType{112, 176}, writeTimes{116, 180}, onceReadTimes{120, 184}, readCycleCount{124, 188}, comFailed{128, 192},
    valueCache{132, 200}, end{136, 208};
}  // namespace at_driver

namespace at_var {
const Offset ownerId{0, 0}, retValue{20, 20}, label{24, 24}, elemType{32, 40}, address{36, 44}, station{40, 48},
    count{44, 52};
}  // namespace at_var

namespace at_protocol {
const Offset frame{0, 0}, frameLength{4, 8}, replyLength{8, 12}, dataOffset{12, 16}, dataLength{16, 20}, var{20, 24};
}  // namespace at_protocol

namespace at_settings {  // ComInfo: the same in both
const size_t maxGroupLength = 16, retryTimes = 28, retryCount = 32, useVarStation = 36, clearedWordA = 40,
             frameTotal = 44, frameDone = 48, clearedWordB = 52, remoteMode = 56, localNode = 60, cycleDone = 68,
             hostContext = 72;
}  // namespace at_settings

const char kUntouched = char(0xee);

typedef std::vector<std::string> Calls;
Calls calls;

void onVariable(void *context, int ownerId, int itemId, int code) {
    calls.push_back("variable " + std::to_string(*static_cast<int *>(context)) + " " + std::to_string(ownerId) + " " +
                    std::to_string(itemId) + " " + std::to_string(code));
}

void onList(QList<RW_VAR> *list, int ownerId, int code) {
    calls.push_back("list of " + std::to_string(list->size()) + " " + std::to_string(ownerId) + " " +
                    std::to_string(code));
}

class Layouts : public ::testing::Test {
protected:
    Layouts() : driver(static_cast<char *>(library.symbol("PLC_driver"))) {
        calls.clear();
        std::memset(settings, kUntouched, sizeof settings);
    }

    template <typename Value>
    void set(size_t offset, Value value) {
        std::memcpy(settings + offset, &value, sizeof value);
    }
    int setting(size_t offset) const { return valueAt<int>(settings, offset); }

    void bind() {
        library.entry<decltype(SetComInfo)>("SetComInfo")(reinterpret_cast<ComInfo *>(settings));
        library.entry<decltype(RegistCallBackFuncIntf)>("RegistCallBackFuncIntf")(onVariable, onList);
        set(at_settings::maxGroupLength, 32);
        set(at_settings::retryTimes, 0);
        set(at_settings::retryCount, 0);
        set(at_settings::useVarStation, 1);
        set(at_settings::remoteMode, 0);
        set(at_settings::localNode, 3);
        set(at_settings::cycleDone, 0);
        set(at_settings::hostContext, static_cast<void *>(&context));
    }

    std::string driverBytes() const { return std::string(driver, at_driver::end); }
    int number(size_t offset) const { return valueAt<int>(driver, offset); }
    const QList<RW_VAR> &list(size_t offset) const { return containerAt<QList<RW_VAR>>(driver, offset); }

    // Two registers from address 100 of station 1, ready to be queued as they stand.
    static RW_VAR readRequest() {
        RW_VAR var = RW_VAR();
        var.ownerId = 5;
        var.itemId = 6;
        var.nodeId = 3;
        var.elemType = 7;
        var.address = 100;
        var.station = 1;
        var.count = 2;
        return var;
    }
    const char *queueRead() {
        RW_VAR var = readRequest();
        library.entry<decltype(AddListOnceReadVar)>("AddListOnceReadVar")(&var, 1);
        return reinterpret_cast<const char *>(library.entry<decltype(ComCommunication)>("ComCommunication")());
    }
    const char *reply(const char *hex) {
        QByteArray bytes = QByteArray::fromHex(hex);
        const auto dataCom = library.entry<decltype(DataCom)>("DataCom");
        return reinterpret_cast<const char *>(dataCom(&bytes, bytes.size()));
    }

    LoadedLibrary library;
    char *const driver;
    alignas(8) char settings[96];
    int context = 77;
};

TEST_F(Layouts, NewDriver) {
    EXPECT_EQ(number(at_driver::comType), 100);
    for (size_t offset = at_driver::retVar; offset < at_driver::retVar + at_var::label; offset += 4) {
        EXPECT_EQ(number(offset), 0) << "retVar at " << offset;
    }
    for (const size_t offset : {at_driver::writeTimes, at_driver::onceReadTimes, at_driver::readCycleCount}) {
        EXPECT_EQ(number(offset), 0) << offset;
    }
    EXPECT_EQ(driver[at_driver::comFailed], 0);
    for (const size_t offset : {at_driver::comInfo, at_driver::varCallBack, at_driver::listCallBack}) {
        EXPECT_EQ(valueAt<void *>(driver, offset), nullptr) << offset;
    }
    for (const size_t offset : {at_driver::readVarList, at_driver::onceReadVarList, at_driver::spareVarList,
                                at_driver::protocolList, at_driver::extendVars}) {
        EXPECT_TRUE(list(offset).isEmpty()) << offset;
    }
}

TEST_F(Layouts, BindingStoresWhatItIsGivenAndClearsTwoWords) {
    library.entry<decltype(FlashLocalRegister)>("FlashLocalRegister")(0x80000001u, 2, 3);
    EXPECT_EQ(valueAt<unsigned int>(library.symbol("LB"), 0), 0x80000001u);
    EXPECT_EQ(valueAt<unsigned int>(library.symbol("RWI"), 0), 3u);

    const std::string before = driverBytes();
    library.entry<decltype(SetComInfo)>("SetComInfo")(reinterpret_cast<ComInfo *>(settings));
    EXPECT_EQ(valueAt<void *>(driver, at_driver::comInfo), static_cast<void *>(settings));
    EXPECT_EQ(driverBytes().substr(sizeof(void *)), before.substr(sizeof(void *)));
    std::string expected(sizeof settings, kUntouched);
    expected.replace(at_settings::clearedWordA, 4, 4, '\0').replace(at_settings::clearedWordB, 4, 4, '\0');
    EXPECT_EQ(std::string(settings, sizeof settings), expected);
}

TEST_F(Layouts, DisabledStationsAreKeysOfTheStationMap) {
    library.entry<decltype(EnableEthernet)>("EnableEthernet")(9, 0);
    library.entry<decltype(EnCommStation)>("EnCommStation")(12, 0);
    const QMap<int, int> &stations = containerAt<QMap<int, int>>(driver, at_driver::stationMap);
    EXPECT_EQ(stations.keys(), QList<int>() << 9 << 12);
}

TEST_F(Layouts, ReadExchange) {
    bind();
    const char *const request = queueRead();
    ASSERT_NE(request, nullptr);
    EXPECT_EQ(containerAt<QByteArray>(request, at_protocol::frame).toHex().toStdString(), "01030064000285d4");
    EXPECT_EQ(valueAt<int>(request, at_protocol::frameLength), 8);
    EXPECT_EQ(valueAt<int>(request, at_protocol::replyLength), 9);
    EXPECT_EQ(valueAt<int>(request, at_protocol::dataOffset), 3);
    EXPECT_EQ(valueAt<int>(request, at_protocol::dataLength), 4);
    EXPECT_EQ(valueAt<int>(request, at_protocol::var + at_var::address), 100);
    EXPECT_EQ(number(at_driver::comType), 2);
    EXPECT_EQ(number(at_driver::onceReadTimes), 1);
    EXPECT_EQ(setting(at_settings::frameTotal), 1);
    EXPECT_EQ(setting(at_settings::frameDone), 0);

    const char *const result = reply("010304000a01025a60");
    EXPECT_EQ(result, driver + at_driver::retVar);
    EXPECT_EQ(valueAt<int>(result, at_var::retValue), 1);
    EXPECT_EQ(valueAt<int>(result, at_var::ownerId), 5);
    EXPECT_EQ(calls, Calls{"variable 77 5 6 1"});
    EXPECT_EQ(setting(at_settings::frameDone), 1);
    EXPECT_EQ((containerAt<QHash<unsigned int, QByteArray>>(driver, at_driver::valueCache).size()), 2);

    QByteArray values;
    const auto getValues = library.entry<decltype(GetRegisterData)>("GetRegisterData");
    EXPECT_EQ(getValues(QString(), 7, QString::fromLatin1("100"), 1, values, 2), 1);
    EXPECT_EQ(values.toHex().toStdString(), "0a000201");

    EXPECT_EQ(library.entry<decltype(ComCommunication)>("ComCommunication")(), nullptr);
    EXPECT_EQ(setting(at_settings::cycleDone), 1);
}

TEST_F(Layouts, FailedExchange) {
    bind();
    ASSERT_NE(queueRead(), nullptr);
    EXPECT_EQ(valueAt<int>(reply(""), at_var::retValue), 46);  // no reply 40, ownerId 5, 1
    EXPECT_EQ(driver[at_driver::comFailed], 1);
    EXPECT_EQ(calls, (Calls{"variable 77 5 6 2", "list of 0 5 1"}));
}

// The host's entries are longer than the fields that the driver reads.
struct HostEntry {
    unsigned char bytes[8];
    QString addressText;
    QString label;
    int count;
    int more[9];
};

TEST_F(Layouts, HostEntries) {
    bind();
    QList<HostEntry> entries;
    for (const char *addressText : {"300", "310"}) {
        entries.append(HostEntry{{0xff, 7, 17, 0xff, 0xff, 0xff, 0xff, 0xff},
                                 QString::fromLatin1(addressText),
                                 QString::fromLatin1("from the host"),
                                 2,
                                 {-1, -1, -1, -1, -1, -1, -1, -1, -1}});
    }
    const auto rebuild = library.entry<decltype(ReCreatReadVarList)>("ReCreatReadVarList");
    EXPECT_EQ(rebuild(reinterpret_cast<QList<ReadVarEntry> *>(&entries)), 1);
    const void *const merged = &list(at_driver::readVarList).at(0);
    EXPECT_EQ(valueAt<int>(merged, at_var::elemType), 7);
    EXPECT_EQ(valueAt<int>(merged, at_var::station), 17);
    EXPECT_EQ(valueAt<int>(merged, at_var::address), 300);
    EXPECT_EQ(valueAt<int>(merged, at_var::count), 12);
    EXPECT_EQ(containerAt<QString>(merged, at_var::label).toStdString(), "from the host");
}

}  // namespace
