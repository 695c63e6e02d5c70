// Seeded play with records, settings and replies of any content. Under the sanitizers nothing may overflow or read too
// far; afterwards the driver works as ever.
#include <climits>
#include <random>

#include "support/driver_scene.h"

namespace {

class Robustness : public DriverScene {
protected:
    int below(int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); }
    int oneOf(const std::vector<int> &values) { return values[random() % values.size()]; }
    QByteArray anyBytes(int most) {
        QByteArray result(below(most + 1), '\0');
        for (char &byte : result) {
            byte = static_cast<char>(below(256));
        }
        return result;
    }
    int anyInt() { return oneOf({INT_MIN, -65536, -300, -16, -1, 0, 1, 2, 7, 9, 255, 256, 8000, 65536, INT_MAX}); }
    int anyCount() { return oneOf({INT_MIN, -300, -9, -1, 0, 1, 2, 8, 9, 33, 300, kMaxElementCount + 1, INT_MAX}); }
    QString anyText() {
        static const char *const kTexts[] = {"0",      "7.3",  "255",          "256",  "7999",          "2147483647",
                                             "511.15", "8000", "134217727.15", "-1.5", "2147483647.15", ""};
        return QString::fromLatin1(kTexts[random() % 12]);
    }
    RW_VAR anyRecord() {
        RW_VAR var = RW_VAR();
        for (int RW_VAR::*field : {&RW_VAR::ownerId, &RW_VAR::accessFlag, &RW_VAR::nodeId, &RW_VAR::retValue,
                                   &RW_VAR::address, &RW_VAR::param2}) {
            var.*field = anyInt();
        }
        var.elemType = below(25) - 2;
        var.station = below(3) == 0 ? anyInt() : 1;
        var.count = anyCount();
        var.param1 = below(4) - 1;
        var.addressText = anyText();
        var.data = anyBytes(12);
        return var;
    }
    QByteArray anyReply() {
        QByteArray reply = PLC_driver.protocolList.isEmpty() ? anyBytes(9) : goodReply(anyBytes(9));
        const int change = below(6);
        if (change == 0) {
            return anyBytes(20);
        }
        if (change == 1) {
            return reply.left(below(reply.size() + 1));
        }
        return change == 2 ? reply + anyBytes(3) : reply;
    }
    void hostCall() {
        RW_VAR var = anyRecord();
        QByteArray out;
        QList<ReadVarEntry> entries;
        switch (below(8)) {
            case 0:
                AddListReadVar(&var);
                break;
            case 1:
                AddListOnceReadVar(&var, below(2));
                break;
            case 2:
                AddListWriteVar(&var, below(2));
                break;
            case 3:
                SetRegisterData(var.label, var.elemType, var.addressText, var.station, var.data, var.count, 1, 2);
                break;
            case 4:
                GetRegisterData(var.label, var.elemType, var.addressText, var.station, out, var.count);
                EXPECT_LE(out.size(), 1200);
                break;
            case 5:
                for (int i = below(5); i > 0; --i) {
                    ReadVarEntry entry = ReadVarEntry();
                    entry.elemType = static_cast<unsigned char>(below(24));
                    entry.station = static_cast<unsigned char>(below(3));
                    entry.addressText = anyText();
                    entry.count = anyCount();
                    entries.append(entry);
                }
                ReCreatReadVarList(&entries);
                break;
            case 6:
                EnableEthernet(anyInt(), below(2));
                break;
            default:
                settings.maxGroupLength = anyInt();
                settings.remoteMode = below(4) == 0 ? 1 : 0;
                settings.localNode = anyInt();
                settings.writeMode = below(3);
                settings.useVarStation = below(2);
                settings.retryTimes = anyInt();
                settings.retryCount = anyInt();
                settings.cycleDone = below(2);
        }
    }

    std::mt19937 random{20240607};
};

TEST_F(Robustness, AnyRecordsAndAnyReplies) {
    for (int round = 0; round < 8000; ++round) {
        hostCall();
        const Protocol *request = ComCommunication();
        if (request != nullptr) {
            EXPECT_EQ(request->frameLength, request->frame.size());
        }
        QByteArray reply = anyReply();
        const RW_VAR *result = DataCom(&reply, below(10) == 0 ? anyInt() : reply.size());
        EXPECT_EQ(result, &PLC_driver.retVar);
        EXPECT_LE(result->retValue, 182);
        if (round % 100 == 99) {
            restart();
        }
    }
    restart();
    queueOnceRead(record("7@100+1"));
    send();
    EXPECT_EQ(answer("0103 02 1234"), 1);
    EXPECT_EQ(cacheText(), "01070064=3412");
}

}  // namespace
