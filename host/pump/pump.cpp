#include "host/pump/pump.h"

#include <chrono>

namespace {

constexpr qint64 kSliceUs = 50000;

class NobodyLooks : public LineTap {
public:
    void received(const QByteArray &, qint64) override {}
    void counted(const dravo::LineStatistics &, qint64) override {}
    void happened(const dravo::LineEvent &) override {}
    void sent(const QByteArray &, qint64) override {}
};

}  // namespace

qint64 nowUs() {
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

Failure pump(SerialPort *port, dravo::Line *line, const TakeEvent &take, LineTap *tap) {
    NobodyLooks nobody;
    LineTap &onlooker = tap != nullptr ? *tap : nobody;
    QByteArray arrived;
    Failure failure = port->read(&arrived);
    const qint64 us = nowUs();
    line->received(arrived, us);
    onlooker.received(arrived, us);
    if (failure) {
        return failure;
    }
    const dravo::Step step = line->next(nowUs());
    onlooker.counted(line->statistics(), nowUs());
    bool goOn = true;
    for (dravo::LineEvent event; goOn && line->takeEvent(&event);) {
        onlooker.happened(event);
        goOn = take(event);
    }
    if (goOn && step.kind == dravo::Step::Send) {
        onlooker.sent(step.bytes, nowUs());
        failure = port->write(step.bytes);
        line->sent(nowUs());
    } else if (goOn) {
        const qint64 waitUs = qBound<qint64>(0, step.untilUs - nowUs(), kSliceUs);
        failure = port->waitForBytes(int((waitUs + 999) / 1000));
    }
    return failure;
}
