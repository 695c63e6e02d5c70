#include "host/pump/pump.h"

#include <chrono>

namespace {
constexpr qint64 kSliceUs = 50000;
}

qint64 nowUs() {
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

Failure pump(SerialPort *port, dravo::Line *line, const TakeEvent &take) {
    QByteArray arrived;
    Failure failure = port->read(&arrived);
    line->received(arrived, nowUs());
    if (failure) {
        return failure;
    }
    const dravo::Step step = line->next(nowUs());
    bool goOn = true;
    for (dravo::LineEvent event; goOn && line->takeEvent(&event);) {
        goOn = take(event);
    }
    if (goOn && step.kind == dravo::Step::Send) {
        failure = port->write(step.bytes);
        line->sent(nowUs());
    } else if (goOn) {
        const qint64 us = qBound<qint64>(0, step.untilUs - nowUs(), kSliceUs);
        failure = port->waitForBytes(int((us + 999) / 1000));
    }
    return failure;
}
