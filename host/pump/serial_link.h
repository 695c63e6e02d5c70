// The serial line: sends one request and collects what answers it. Knows lengths and silences, no frame contents.
// Used on the communication thread only.
#ifndef DRAVO_HOST_PUMP_SERIAL_LINK_H
#define DRAVO_HOST_PUMP_SERIAL_LINK_H

#include <QtCore/QByteArray>
#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtSerialPort/QSerialPort>
#include <functional>

#include "host/failure.h"

struct LineSettings {
    QString device;
    int baud = 19200;
    QSerialPort::Parity parity = QSerialPort::EvenParity;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
    int timeoutMs = 500;
};

struct LineRequest {
    QByteArray frame;
    int replyLength;  // bytes expected; 0: none comes (broadcast); -1: any number, ended by silence
    int station;      // who answers
};

class SerialLink {
public:
    enum class Result { Done, Interrupted, LineLost };
    /// Called about every 50 ms while an exchange waits; false ends it as Interrupted.
    using KeepWaiting = std::function<bool()>;

    Failure open(const LineSettings &settings);

    /// Sends the frame and fills reply with all that came: until the expected length is reached, or the line is silent
    /// after the first byte, or nothing came within the timeout (reply is empty).
    Result exchange(const LineRequest &request, const KeepWaiting &keepWaiting, QByteArray *reply);

    /// After LineLost: why.
    const Failure &loss() const { return loss_; }
    qint64 bytesOut() const { return bytesOut_; }
    qint64 bytesIn() const { return bytesIn_; }

private:
    Result lost();
    Result send(const QByteArray &frame);
    Result settle(const LineRequest &request, const KeepWaiting &keepWaiting);
    Result receive(const LineRequest &request, const KeepWaiting &keepWaiting, QByteArray *reply);
    Result waitForBytes(qint64 milliseconds, const KeepWaiting &keepWaiting, QByteArray *bytes);
    qint64 silenceMs() const;
    qint64 charactersMs(double characters) const;

    QSerialPort port_;
    Failure loss_;
    LineSettings settings_;
    QElapsedTimer clock_;
    qint64 lastByteAt_ = 0;
    QByteArray lastFrame_;
    QHash<int, qint64> lateUntil_;  // station: until when a reply to an earlier request may still come from it
    qint64 bytesOut_ = 0;
    qint64 bytesIn_ = 0;
};

#endif  // DRAVO_HOST_PUMP_SERIAL_LINK_H
