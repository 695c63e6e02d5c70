#include "host/pump/serial_port.h"

#include <QtCore/QFileInfo>

namespace {
constexpr int kWriteMs = 1000;    // for a frame to fit into the device's buffer
constexpr int kMostPortions = 8;  // read at once; a device that never runs dry is not waited for
}  // namespace

Failure SerialPort::open(const PortSettings &settings) {
    port_.close();
    // QSerialPort looks for names without a slash in /dev.
    const QFileInfo file(settings.device);
    port_.setPortName(file.exists() ? file.absoluteFilePath() : settings.device);
    port_.setBaudRate(settings.baud);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(settings.parity);
    port_.setStopBits(settings.stopBits);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    return port_.open(QIODevice::ReadWrite)
               ? Failure()
               : Failure(QStringLiteral("cannot open %1: %2").arg(settings.device, port_.errorString()));
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

// For a device that hung up the port has no reason of the system. It is closed at once: while somebody has it open, an
// adapter that is plugged in again gets another name.
Failure SerialPort::lost() {
    const bool hasReason = port_.error() != QSerialPort::UnknownError && port_.error() != QSerialPort::NoError &&
                           port_.errorString() != QStringLiteral("Unknown error");
    const QString reason = hasReason ? QStringLiteral(" (%1)").arg(port_.errorString()) : QString();
    Failure failure(QStringLiteral("the line is lost: the device failed or is gone%1").arg(reason));
    port_.close();
    return failure;
}
