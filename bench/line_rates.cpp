// Reads per second in virtual time: what late and lost replies cost.
#include <cstdio>

#include "line/desk.h"

namespace {

struct Case {
    const char *name;
    double late;
    double lost;
};

double readsPerSecond(const Case &what, double seconds) {
    WireFaults faults;
    faults.late = what.late;
    faults.lost = what.lost / 2;  // of the request, and of the reply
    WireTimes times;
    times.replyFirstUs = times.replyLastUs = 22000;
    dravo::LineSettings settings;
    settings.timeoutUs = times.timeoutUs;
    settings.frameLimit = 10;
    Desk desk(settings, faults, times);
    QVector<dravo::Variable> variables;
    for (int i = 0; i < 8; ++i) {
        variables.append(variable(1, 7, QByteArray::number(i * 10), 10));
    }
    desk.line.watch(variables, 0);
    desk.run(Us(seconds * 1e6));
    return double(desk.line.statistics().line().counts.answered) / seconds;
}

}  // namespace

int main() {
    std::printf("eight reads of 10 registers, one station, 19200 baud, timeout 200 ms, lifetime 600 ms\n");
    const Case cases[] = {
        {"none", 0, 0}, {"1 %", 0.01, 0}, {"5 %", 0.05, 0}, {"30 %", 0.3, 0}, {"5 %, and 2 % lost", 0.05, 0.02}};
    for (const Case &what : cases) {
        std::printf("late %-18s %6.2f reads per second\n", what.name, readsPerSecond(what, 6000));
    }
}
