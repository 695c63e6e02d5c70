// The serial port: bytes out, bytes in, and why it was lost. Knows no frames. Communication thread.
#ifndef DRAVO_HOST_PUMP_SERIAL_PORT_H
#define DRAVO_HOST_PUMP_SERIAL_PORT_H

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtSerialPort/QSerialPort>

#include "host/failure.h"

struct PortSettings {
    QString device;
    int baud = 19200;
    QSerialPort::Parity parity = QSerialPort::EvenParity;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};

class SerialPort {
public:
    /// Opens the device; one that is open is closed first. A failure says what to do about it.
    Failure open(const PortSettings &settings);
    /// Sets the open device, which stays the same, to other ones, and drops what has arrived.
    Failure change(const PortSettings &settings);

    // After a failure of these the device is lost, until it is opened again.

    /// Appends everything that has arrived. Does not wait.
    Failure read(QByteArray *bytes);
    /// Comes back when the device has taken all of them; they may still be leaving it.
    Failure write(const QByteArray &bytes);
    /// Until something has arrived or the time is over. milliseconds: 0 or above.
    Failure waitForBytes(int milliseconds);

private:
    bool set(const PortSettings &settings);
    Failure lost();

    QSerialPort port_;
    QString path_;
};

#endif  // DRAVO_HOST_PUMP_SERIAL_PORT_H
