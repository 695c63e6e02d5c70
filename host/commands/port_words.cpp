#include "host/commands/port_words.h"

QString portWords(const PortSettings &port) {
    const char parity = port.parity == QSerialPort::EvenParity  ? 'E'
                        : port.parity == QSerialPort::OddParity ? 'O'
                                                                : 'N';
    return QStringLiteral("%1 %2 8%3%4")
        .arg(port.device.isEmpty() ? QStringLiteral("simulated line") : port.device, QString::number(port.baud),
             QString(QLatin1Char(parity)), QString::number(port.stopBits == QSerialPort::TwoStop ? 2 : 1));
}
