// ports: the serial ports of this machine.
#include <unistd.h>

#include <QtCore/QFile>
#include <QtSerialPort/QSerialPortInfo>

#include "host/commands/command.h"
#include "host/commands/exit_status.h"
#include "host/plan/aligned_lines.h"
#include "host/pump/port_fault.h"
#include "host/pump/port_holders.h"
#include "host/screen/printable.h"

namespace {

struct Access {
    QString word;
    QString reason;  // empty: it can be opened
};

// Nothing is opened: that would move the control lines, which switch some adapters and restart some devices.
Access accessTo(const QString &path) {
    if (access(QFile::encodeName(path).constData(), R_OK | W_OK) != 0) {
        return {QStringLiteral("forbidden"), portPermission(path)};
    }
    const QStringList holders = portHolders(path);
    return holders.isEmpty() ? Access{QStringLiteral("free"), QString()}
                             : Access{QStringLiteral("in use"), holders.join(QStringLiteral(", "))};
}

QString hexadecimal(quint16 number) {
    return QStringLiteral("%1").arg(number, 4, 16, QLatin1Char('0'));
}

/// What the system knows of the port, a line each.
QStringList facts(const QSerialPortInfo &port) {
    QStringList lines{port.description(), port.manufacturer()};
    if (!port.serialNumber().isEmpty()) {
        lines.append(QStringLiteral("serial number ") + port.serialNumber());
    }
    if (port.hasVendorIdentifier() && port.hasProductIdentifier()) {
        lines.append(QStringLiteral("USB ") + hexadecimal(port.vendorIdentifier()) + QLatin1Char(':') +
                     hexadecimal(port.productIdentifier()));
    }
    lines.removeAll(QString());
    return lines;
}

void append(const QSerialPortInfo &port, QVector<QVector<Cell>> *lines) {
    const Access access = accessTo(port.systemLocation());
    QStringList texts = facts(port);
    if (!access.reason.isEmpty()) {
        texts.prepend(access.reason);
    }
    for (int i = 0; i < qMax(1, texts.size()); ++i) {
        lines->append({{i == 0 ? port.systemLocation() : QString(), false},
                       {i == 0 ? access.word : QString(), false},
                       {printable(texts.value(i)), false}});
    }
}

void addOptions(OptionSet *, Options *) {}

int run(const Options &) {
    QVector<QVector<Cell>> lines{
        {{QStringLiteral("port"), false}, {QStringLiteral("access"), false}, {QStringLiteral("what is known"), false}}};
    for (const QSerialPortInfo &port : QSerialPortInfo::availablePorts()) {
        append(port, &lines);
    }
    return print(lines.size() == 1 ? QStringLiteral("there is no serial port\n") : aligned(lines));
}

}  // namespace

const Command kPortsCommand{
    "ports",
    "List the serial ports of this machine",
    "Shows each serial port, whether it can be opened (free, in use by which program, forbidden to this user and what "
    "to "
    "do about it), and what the system knows of it. No port is opened. Programs of other users show to root alone.",
    &addOptions,
    &run,
};
