// Reads per second in virtual time: what late and lost replies cost.
#include <cstdio>

#include "korvel_dravo_line.h"
#include "line/wire.h"

namespace {

struct Case {
    const char *name;
    double late;
    double lost;
};

double readsPerSecond(const Case &what, int stations, double seconds) {
    WireFaults faults;
    faults.late = what.late;
    faults.lost = what.lost / 2;  // of the request, and of the reply
    WireTimes times;
    times.replyFirstUs = times.replyLastUs = 20000;
    std::vector<int> numbers;
    for (int station = 1; station <= stations; ++station) {
        numbers.push_back(station);
    }
    Wire wire(faults, times, numbers, 1);
    wire.alarm = [](const std::string &) {};
    wire.written = [](int, quint16, quint16) {};
    dravo::LineSettings settings;
    settings.timeoutUs = times.timeoutUs;
    settings.lifetimeUs = times.lifetimeUs;
    settings.frameLimit = 10;
    dravo::Line line(settings, 0);
    QVector<dravo::Variable> variables;
    for (int i = 0; i < 8 * stations; ++i) {
        dravo::Variable variable;
        variable.station = i % stations + 1;
        variable.elemType = 7;
        variable.addressText = QString::number(i * 10);
        variable.count = 10;
        dravo::resolve(&variable);
        variables.append(variable);
    }
    line.watch(variables, 0);
    Us now = 0;
    long good = 0;
    while (now < Us(seconds * 1e6)) {
        wire.advance(now);
        line.received(wire.take(now), now);
        const dravo::Step step = line.next(now);
        for (dravo::LineEvent event; line.takeEvent(&event);) {
            good += event.kind == dravo::LineEvent::Exchange && event.failure == dravo::LineEvent::None ? 1 : 0;
        }
        if (step.kind == dravo::Step::Send) {
            wire.send(step.bytes, now, 0);
            line.sent(now);
        } else {
            now = std::max(now + 1, std::min(step.untilUs, wire.nextArrivalUs()));
        }
    }
    return double(good) / seconds;
}

}  // namespace

int main() {
    const Case cases[] = {
        {"none", 0, 0}, {"1 %", 0.01, 0}, {"5 %", 0.05, 0}, {"30 %", 0.3, 0}, {"5 % and 2 % lost", 0.05, 0.02}};
    for (const Case &what : cases) {
        std::printf("late %-18s %5.1f reads per second\n", what.name, readsPerSecond(what, 1, 5000));
    }
}
