// Seeded play with records, settings and replies of any content. Under the sanitizers nothing may overflow or read too
// far; every reply gets a result code.
#include <algorithm>
#include <climits>
#include <random>

#include "support/driver_scene.h"

namespace {

using Robustness = DriverScene;

TEST_F(Robustness, AnyRecordsAndAnyReplies) {
    std::mt19937 random{20240607};
    const auto below = [&random](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    const int ints[] = {INT_MIN, -65536, -300, -16, -1, 0, 1, 2, 7, 9, 255, 256, 8000, 65536, INT_MAX};
    const auto anyInt = [&] { return ints[below(15)]; };
    const auto anyBytes = [&](int most) {
        QByteArray result(below(most + 1), '\0');
        std::generate(result.begin(), result.end(), [&] { return static_cast<char>(below(256)); });
        return result;
    };
    const auto anyRecord = [&] {
        const char *const texts[] = {"0",      "7.3",  "255",  "256",          "7999",          "2147483647",
                                     "511.15", "8000", "-1.5", "134217727.15", "2147483647.15", ""};
        const int counts[] = {INT_MIN, -9, -1, 0, 1, 2, 8, 9, 33, 300, kMaxElementCount + 1, INT_MAX};
        const std::string count = std::to_string(counts[below(12)]);
        RW_VAR var = record(std::to_string(below(25) - 2) + "@" + texts[below(12)] + "+" + count);
        for (int RW_VAR::*field : {&RW_VAR::ownerId, &RW_VAR::accessFlag, &RW_VAR::nodeId, &RW_VAR::retValue,
                                   &RW_VAR::address, &RW_VAR::station, &RW_VAR::param1, &RW_VAR::param2}) {
            var.*field = anyInt();
        }
        var.data = anyBytes(12);
        return var;
    };
    const auto anyReply = [&] {
        const QList<Protocol> &requests = PLC_driver.protocolList;
        const bool usual = !requests.isEmpty() && requests.at(0).replyLength < 4096;
        const QByteArray reply = usual ? goodReply(anyBytes(9)) : anyBytes(9);
        const QByteArray others[] = {reply + anyBytes(3), reply.left(below(reply.size() + 1)), anyBytes(20)};
        return below(2) == 0 ? reply : others[below(3)];
    };
    for (int round = 0; round < 24000; ++round) {
        if (round % 60 == 0) {
            restart();
        }
        if (round % 3 == 0) {
            for (int ComInfo::*field :
                 {&ComInfo::maxGroupLength, &ComInfo::localNode, &ComInfo::retryTimes, &ComInfo::retryCount}) {
                settings.*field = anyInt();
            }
            for (int ComInfo::*mode :
                 {&ComInfo::remoteMode, &ComInfo::writeMode, &ComInfo::useVarStation, &ComInfo::cycleDone}) {
                settings.*mode = below(4) == 0 ? 2 : 0;
            }
            RW_VAR var = anyRecord(), cyclic = anyRecord();
            QByteArray out;
            AddListReadVar(&cyclic);
            below(2) == 0 ? AddListOnceReadVar(&var, below(2)) : AddListWriteVar(&var, below(2));
            SetRegisterData(var.label, var.elemType, var.addressText, var.station, var.data, var.count, 1, 2);
            GetRegisterData(var.label, var.elemType, var.addressText, var.station, out, var.count);
            EXPECT_LE(out.size(), 1200);
            EnableEthernet(anyInt(), below(2));
        }
        ComCommunication();
        QByteArray reply = anyReply();
        EXPECT_LE(DataCom(&reply, below(10) == 0 ? anyInt() : reply.size())->retValue, 182);
    }
}

}  // namespace
