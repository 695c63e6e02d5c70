#include "host/pump/serial_port.h"

#include <poll.h>
#include <termios.h>

#include <QtCore/QFileInfo>

#include "host/pump/port_fault.h"

namespace {

constexpr int kWriteMs = 1000;    // for a frame to fit into the device's buffer
constexpr int kMostPortions = 8;  // read at once; a device that never runs dry is not waited for

/// QSerialPort looks for names without a slash in /dev.
QString pathOf(const QString &device) {
    const QFileInfo file(device);
    if (file.exists()) {
        return file.absoluteFilePath();
    }
    return device.contains(QLatin1Char('/')) ? device : QStringLiteral("/dev/") + device;
}

/// QSerialPort takes every byte. Here one with a wrong parity or stop bit becomes 0, so that it can never look right;
/// without parity it is dropped.
bool checkBytes(int descriptor, QSerialPort::Parity parity) {
    termios device{};
    if (tcgetattr(descriptor, &device) != 0) {
        return false;
    }
    device.c_iflag |= INPCK;
    device.c_iflag &= ~tcflag_t(IGNPAR | PARMRK);
    device.c_iflag |= parity == QSerialPort::NoParity ? tcflag_t(IGNPAR) : 0;
    return tcsetattr(descriptor, TCSANOW, &device) == 0;
}

bool hungUp(int descriptor) {
    pollfd device{descriptor, 0, 0};
    return poll(&device, 1, 0) > 0 && (device.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

}  // namespace

Failure SerialPort::open(const PortSettings &settings) {
    port_.close();
    path_ = pathOf(settings.device);
    port_.setPortName(path_);
    port_.setDataBits(QSerialPort::Data8);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    set(settings);  // closed, so they are for the opening
    if (port_.open(QIODevice::ReadWrite) && checkBytes(port_.handle(), settings.parity)) {
        return Failure();
    }
    const QString otherwise = port_.errorString();
    port_.close();  // or it would be what keeps it busy
    return Failure(QStringLiteral("cannot open %1: %2").arg(settings.device, portFault(path_, otherwise)));
}

bool SerialPort::set(const PortSettings &settings) {
    return port_.setParity(settings.parity) && port_.setStopBits(settings.stopBits) && port_.setBaudRate(settings.baud);
}

Failure SerialPort::change(const PortSettings &settings) {
    if (!set(settings) || !checkBytes(port_.handle(), settings.parity)) {
        return Failure(
            QStringLiteral("%1 cannot be set to %2 baud: %3").arg(path_).arg(settings.baud).arg(port_.errorString()));
    }
    port_.clear(QSerialPort::Input);
    return Failure();
}

// What has arrived shows only after a wait, of no time at all here.
Failure SerialPort::read(QByteArray *bytes) {
    bool good = port_.isOpen();
    for (int portions = 0; good && portions < kMostPortions; ++portions) {
        port_.clearError();
        const bool any = port_.waitForReadyRead(0);
        good = any || port_.error() == QSerialPort::TimeoutError;
        if (!any) {
            break;
        }
    }
    if (port_.isOpen()) {
        bytes->append(port_.readAll());
    }
    return good ? Failure() : lost();
}

Failure SerialPort::write(const QByteArray &bytes) {
    if (port_.write(bytes) != bytes.size()) {
        return lost();
    }
    while (port_.bytesToWrite() > 0) {
        if (!port_.waitForBytesWritten(kWriteMs)) {
            return lost();
        }
    }
    return Failure();
}

Failure SerialPort::waitForBytes(int milliseconds) {
    port_.clearError();
    const bool none = port_.bytesAvailable() == 0 && !port_.waitForReadyRead(milliseconds);
    return none && port_.error() != QSerialPort::TimeoutError ? lost() : Failure();
}

// QSerialPort's own words for a device that hung up are "unknown error". It is closed at once: while somebody has it
// open, an adapter that is plugged in again gets another name.
Failure SerialPort::lost() {
    QString reason = port_.errorString();
    if (!QFileInfo::exists(path_) || (port_.isOpen() && hungUp(int(port_.handle())))) {
        reason = QStringLiteral("%1 went away; unplugged?").arg(path_);
    } else if (port_.error() == QSerialPort::TimeoutError) {
        reason = QStringLiteral("%1 takes no bytes").arg(path_);
    } else if (port_.error() == QSerialPort::UnknownError || port_.error() == QSerialPort::NoError) {
        reason = QStringLiteral("%1 failed").arg(path_);
    }
    port_.close();
    return Failure(QStringLiteral("the line is lost: ") + reason);
}
