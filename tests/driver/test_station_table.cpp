#include "driver/station_table.h"

#include <climits>

#include "support/driver_scene.h"

namespace {

using StationTable = DriverScene;

struct Step {
    int station, enable;
};

struct TableCase {
    const char *name;
    std::vector<Step> steps;
    QList<int> disabled;
};

TEST_F(StationTable, Edits) {
    const TableCase cases[] = {
        {"disabled", {{5, 0}, {0, 0}, {INT_MAX, 0}}, {0, 5, INT_MAX}},
        {"twice off, once on", {{5, 0}, {5, 0}, {5, 1}}, {}},
        {"never disabled", {{6, 0}, {5, 1}}, {6}},
        {"other values of enable", {{5, 0}, {5, 2}, {5, -1}, {6, 2}, {6, -1}, {6, INT_MIN}}, {5}},
        {"a negative station enables all", {{5, 0}, {6, 0}, {-1, 0}}, {}},
        {"whatever enable is", {{5, 0}, {INT_MIN, 7}, {6, 0}}, {6}}};
    for (void (*edit)(int, int) : {&EnableEthernet, &EnCommStation}) {
        for (const TableCase &row : cases) {
            restart();
            for (const Step &step : row.steps) {
                edit(step.station, step.enable);
            }
            EXPECT_EQ(PLC_driver.stationMap.keys(), row.disabled) << row.name;
            for (const int station : {0, 5, 6, INT_MAX, -1, INT_MIN}) {
                EXPECT_EQ(Ethernetcontains(station), row.disabled.contains(station) ? 1 : 0) << row.name;
            }
        }
    }
}

TEST_F(StationTable, RequestHandedOutIsAnsweredAsUsual) {
    queueWrite(recordOf(3, 4, record("2/7@1+1=0100")));
    const QByteArray frame = send();
    EnableEthernet(2, 0);
    EXPECT_EQ(send(), frame);
    EXPECT_EQ(answer(goodReply()), 1);
    expectCallbacks({"done 3/4"});
}

}  // namespace
