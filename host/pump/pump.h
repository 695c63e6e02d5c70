// Carries bytes between the serial port and the line engine, which makes every decision. Communication thread.
#ifndef DRAVO_HOST_PUMP_PUMP_H
#define DRAVO_HOST_PUMP_PUMP_H

#include <functional>

#include "host/pump/line_tap.h"
#include "host/pump/serial_port.h"
#include "korvel_dravo_line.h"

/// Microseconds of a clock that never runs backwards.
qint64 nowUs();

/// Takes what has happened. @return false: leave the line alone now.
using TakeEvent = std::function<bool(const dravo::LineEvent &event)>;

/// One turn: what has arrived goes in, what has happened is told; then a frame goes out, or some of the time passes in
/// which there is nothing to do, 50 ms at most so that keys, signals and new operations are served.
/// @param tap  sees everything; null: nobody looks on. @return none, or why the device is lost.
Failure pump(SerialPort *port, dravo::Line *line, const TakeEvent &take, LineTap *tap = nullptr);

#endif  // DRAVO_HOST_PUMP_PUMP_H
