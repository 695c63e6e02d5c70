// Whoever looks on while bytes are carried between port and engine. Each call of a turn of the pump comes in the order
// of the functions here; times are those of nowUs(). Communication thread.
#ifndef DRAVO_HOST_PUMP_LINE_TAP_H
#define DRAVO_HOST_PUMP_LINE_TAP_H

#include <QtCore/QByteArray>

#include "korvel_dravo_line.h"

class LineTap {
public:
    LineTap() = default;
    LineTap(const LineTap &) = delete;
    LineTap &operator=(const LineTap &) = delete;
    virtual ~LineTap() = default;

    /// Bytes that have arrived by now, in any portions; none too.
    virtual void received(const QByteArray &bytes, qint64 us) = 0;
    /// The engine has sorted them, and this is what it has counted so far.
    virtual void counted(const dravo::LineStatistics &statistics, qint64 us) = 0;
    /// What it makes of them.
    virtual void happened(const dravo::LineEvent &event) = 0;
    /// A frame begins to go out.
    virtual void sent(const QByteArray &frame, qint64 us) = 0;
};

#endif  // DRAVO_HOST_PUMP_LINE_TAP_H
