// Seeded play with records, settings and replies of any content. Under the sanitizers nothing may overflow or read too
// far; afterwards the driver works as ever.
#include <algorithm>
#include <climits>
#include <random>

#include "support/driver_scene.h"

namespace {

class Robustness : public DriverScene {
protected:
    int below(int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); }
    template <typename Value, size_t size>
    Value oneOf(const Value (&values)[size]) {
        return values[random() % size];
    }
    int anyInt() { return oneOf({INT_MIN, -65536, -300, -16, -1, 0, 1, 2, 7, 9, 255, 256, 8000, 65536, INT_MAX}); }
    QByteArray anyBytes(int most) {
        QByteArray result(below(most + 1), '\0');
        std::generate(result.begin(), result.end(), [this] { return static_cast<char>(below(256)); });
        return result;
    }
    RW_VAR anyRecord() {
        const char *address = oneOf({"0", "7.3", "255", "256", "7999", "2147483647", "511.15", "8000", "-1.5",
                                     "134217727.15", "2147483647.15", ""});
        const int count = oneOf({INT_MIN, -9, -1, 0, 1, 2, 8, 9, 33, 300, int(kMaxElementCount) + 1, INT_MAX});
        RW_VAR var = record(std::to_string(below(25) - 2) + "@" + address + "+" + std::to_string(count));
        for (int RW_VAR::*field : {&RW_VAR::ownerId, &RW_VAR::accessFlag, &RW_VAR::nodeId, &RW_VAR::retValue,
                                   &RW_VAR::address, &RW_VAR::param2}) {
            var.*field = anyInt();
        }
        var.station = below(3) == 0 ? anyInt() : 1;
        var.param1 = below(4) - 1;
        var.data = anyBytes(12);
        return var;
    }
    QByteArray anyReply() {
        const QList<Protocol> &requests = PLC_driver.protocolList;
        const bool usual = !requests.isEmpty() && requests.at(0).replyLength < 4096;
        const QByteArray reply = usual ? goodReply(anyBytes(9)) : anyBytes(9);
        return oneOf({reply, reply, reply, reply + anyBytes(3), reply.left(below(reply.size() + 1)), anyBytes(20)});
    }

    std::mt19937 random{20240607};
};

TEST_F(Robustness, AnyRecordsAndAnyReplies) {
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
    restart();
    queue("read 7@100+1");
    send();
    EXPECT_EQ(answer("0103 02 1234"), 1);
    EXPECT_EQ(cacheText(), "01070064=3412");
}

}  // namespace
