// What must not creep back in: allocations of an exchange, and work that outgrows its size. No time is measured.
#include <cmath>

#include "bench/driver_work.h"
#include "bench/heap_count.h"
#include "support/driver_scene.h"
#include "work/counted_steps.h"

namespace {

using Allocations = DriverScene;

TEST_F(Allocations, TwoInAnExchangeOneInAReadOfValues) {
    for (const char *request : {"cyclic 7@100+120", "cyclic 13@0+60", "cyclic 0@0+960", "read 7@100+1", "read 1@0+9",
                                "write 7@1+1=3412", "write 7@1+3=341278569abc", "write 1@1+1=01", "write 1@1+9=ff01",
                                "write 12@1+1=78563412", "write 13@1+1=78563412", "write 15@163+1=01"}) {
        for (const int round : {0, 1, 2, 3}) {  // with remote frames from 2 on; first lists and cache grow
            if (round % 2 == 0) {
                restart();
                RegistCallBackFuncIntf(nullptr, nullptr);
                settings.remoteMode = round;
            }
            queue(round % 2 != 0 && *request == 'c' ? "" : request);
            long allocations = 0, exchanges = 0;
            do {
                allocations += countHeap([] { ComCommunication(); }).allocations;
                QByteArray reply = goodReply();
                allocations += countHeap([&] { EXPECT_EQ(DataCom(&reply, reply.size())->retValue, 1); }).allocations;
                ++exchanges;
            } while (!PLC_driver.protocolList.isEmpty());
            EXPECT_LE(allocations, round % 2 == 0 ? 10000 : 2 * exchanges) << request << ", round " << round;
        }
    }
    for (int type = 0; type < 22; ++type) {
        const QString address =
            QString::fromLatin1(type >= 15 && type != 18 && type != 19 && type != 21 ? "6.3" : "100");
        QByteArray out;
        const auto read = [&] { EXPECT_EQ(GetRegisterData(QString(), type, address, 1, out, 120), 1); };
        read();
        EXPECT_LE(countHeap(read).allocations, 1) << "type " << type;
    }
}

TEST(CountedWork, GrowsNoFasterThanItsSize) {
    const auto same = [](double) { return 1.0; };
    const auto linear = [](double size) { return size; };
    const auto sorting = [](double size) { return size * std::log(size); };
    const std::tuple<const char *, int, int, std::function<double(double)>> growths[] = {
        {"rebuild", 1000, 20000, sorting},    {"sorted_rebuild", 1000, 20000, sorting},
        {"rotation", 10, 20000, same},        {"all_disabled", 1000, 20000, linear},
        {"get_register", 100, 10000, linear}, {"set_register", 100, 10000, linear},
        {"cyclic_read", 10, 120, linear},     {"crc", 100, 10000, linear},
        {"station_read", 1, 200, same},
    };
    for (const auto &[name, small, large, growth] : growths) {
        const auto steps = [&work = workNamed(name)](int size) {
            const std::function<void()> once = work.prepare(size);
            long sum = 0;
            for (int i = 0; i < 5; ++i) {
                sum += stepsOf(once);
            }
            return static_cast<double>(sum);
        };
        const double most = growth(large) / growth(small) * 1.5;
        EXPECT_LE(steps(large) / steps(small), most) << name;
    }
}

TEST(CountedWork, ARebuildHoldsTheListForAMomentAndLittleMemory) {
    const std::function<void()> few = workNamed("rebuild").prepare(10), many = workNamed("rebuild").prepare(10000);
    few();
    EXPECT_EQ(stepsWithList(many), stepsWithList(few));
    EXPECT_LE(countHeap(many).mostBytes, 40 * 10000);
}

}  // namespace
