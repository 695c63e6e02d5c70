#include "host/plan/dry_run.h"

#include "host/plan/read_frame.h"
#include "korvel_dravo_port.h"

namespace {

// The answer of a controller whose coils and registers are all zero.
QByteArray zeroReply(const QByteArray &request) {
    const int bytes = dataBytes(readFrame(request));
    QByteArray reply = request.left(2);
    reply.append(char(bytes));
    reply.append(bytes, '\0');
    QByteArray summed = reply;  // the function takes what it could change
    const int crc = CalCRC(reinterpret_cast<unsigned char *>(summed.data()), static_cast<unsigned short>(reply.size()));
    reply.append(char(crc & 0xFF));
    reply.append(char(crc >> 8));
    return reply;
}

// Nobody else is on this line: no silence at its start, no copies of what is sent.
dravo::LineSettings quiet(dravo::LineSettings settings) {
    settings.startSilenceUs = 0;
    settings.echo = dravo::EchoOff;
    settings.remoteNode = -1;
    settings.passPeriodUs = 0;
    return settings;
}

}  // namespace

QVector<DryRequest> dryPass(const QVector<dravo::Variable> &variables, const dravo::LineSettings &settings) {
    QVector<DryRequest> requests;
    qint64 now = 0;
    dravo::Line line(quiet(settings), now);
    bool over = line.watch(variables, now) == 0;
    while (!over) {
        const dravo::Step step = line.next(now);
        for (dravo::LineEvent event; line.takeEvent(&event);) {
            if (event.kind == dravo::LineEvent::Exchange && event.cyclic && !over) {
                requests.append(
                    {{event.station, event.elemType, event.address, event.count}, event.request, event.reply});
            }
            over = over || event.kind == dravo::LineEvent::PassDone;
        }
        if (!over && step.kind == dravo::Step::Send) {
            line.sent(now);
            line.received(zeroReply(step.bytes), now);
        } else {
            now = qMax(now + 1, step.untilUs);
        }
    }
    return requests;
}

PassFigures passFigures(const QVector<dravo::Variable> &variables, const dravo::LineSettings &settings) {
    dravo::Line line(quiet(settings), 0);
    const int requests = line.watch(variables, 0);
    return {requests, line.plannedPassUs()};
}
