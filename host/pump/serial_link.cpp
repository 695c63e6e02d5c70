#include "host/pump/serial_link.h"

#include <QtCore/QFileInfo>
#include <cmath>

namespace {

constexpr double kFrameGap = 3.5;  // characters of silence between frames
// The silence that ends a reply is judged from here, behind a kernel that is not real-time and perhaps a USB converter
// that hands bytes on every 16 ms. It is waited out only after a reply of another length than the expected one.
constexpr qint64 kShortestSilenceMs = 20;
constexpr double kBitsPerCharacter = 11;
constexpr qint64 kTurnaroundMs = 100;  // time the stations have to carry out a broadcast
constexpr qint64 kSliceMs = 50;
constexpr qint64 kLongestReply = 4096;  // ends a line that never falls silent

}  // namespace

Failure SerialLink::open(const LineSettings &settings) {
    settings_ = settings;
    // QSerialPort looks for names without a slash in /dev.
    const QFileInfo file(settings.device);
    port_.setPortName(file.exists() ? file.absoluteFilePath() : settings.device);
    port_.setBaudRate(settings.baud);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(settings.parity);
    port_.setStopBits(settings.stopBits);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    clock_.start();
    lastByteAt_ = 0;
    return port_.open(QIODevice::ReadWrite)
               ? Failure()
               : Failure(QStringLiteral("cannot open %1: %2").arg(settings.device, port_.errorString()));
}

SerialLink::Result SerialLink::exchange(const LineRequest &request, const KeepWaiting &keepWaiting, QByteArray *reply) {
    reply->clear();
    Result result = settle(request, keepWaiting);
    if (result != Result::Done) {
        return result;
    }
    const bool suspect = clock_.elapsed() < lateUntil_.value(request.station, 0);
    result = send(request.frame);
    if (result != Result::Done) {
        return result;
    }
    const qint64 sentAt = clock_.elapsed();
    lastFrame_ = request.frame;
    if (request.replyLength == 0) {
        QByteArray nobodys;
        return waitForBytes(kTurnaroundMs, keepWaiting, &nobodys);
    }
    result = receive(request, keepWaiting, reply);
    // Of several requests sent, one answer says nothing about which of them it answers: the last may still get its own.
    if (result == Result::Done && (reply->isEmpty() || suspect)) {
        lateUntil_.insert(request.station, sentAt + settings_.timeoutMs + settings_.timeoutMs / 2);
    }
    return result;
}

// Empties the input and lets the line fall silent. What is still there, or still comes, answers an earlier request: a
// late reply has a right station and checksum, and one of the right length would be stored as the value of the request
// about to be sent. So after a request without an answer the next different request to that station is held back until
// half a timeout more has passed; the same frame again is not, since either answer is then the right one. Other
// stations need not wait: a reply under another station number is refused.
SerialLink::Result SerialLink::settle(const LineRequest &request, const KeepWaiting &keepWaiting) {
    const qint64 start = clock_.elapsed();
    qint64 until = qMax(start, lastByteAt_ + charactersMs(kFrameGap));
    if (request.frame != lastFrame_) {
        until = qMax(until, lateUntil_.value(request.station, 0));
    }
    const qint64 bound = until + settings_.timeoutMs;  // a line that babbles on is not waited for
    QByteArray late;
    do {
        const Result result = waitForBytes(qMax<qint64>(until - clock_.elapsed(), 0), keepWaiting, &late);
        if (result != Result::Done) {
            return result;
        }
        if (!late.isEmpty()) {
            until = qMin(bound, qMax(until, lastByteAt_ + silenceMs()));
        }
    } while (clock_.elapsed() < until);
    return Result::Done;
}

SerialLink::Result SerialLink::send(const QByteArray &frame) {
    if (port_.write(frame) != frame.size()) {
        return lost();
    }
    while (port_.bytesToWrite() > 0) {
        if (!port_.waitForBytesWritten(settings_.timeoutMs + int(charactersMs(frame.size())))) {
            return lost();
        }
    }
    bytesOut_ += frame.size();
    return Result::Done;
}

SerialLink::Result SerialLink::receive(const LineRequest &request, const KeepWaiting &keepWaiting, QByteArray *reply) {
    // The frame is still leaving the port when the write returns.
    qint64 patience = settings_.timeoutMs + charactersMs(request.frame.size());
    const qint64 enough = request.replyLength > 0 ? request.replyLength : kLongestReply;
    while (reply->size() < enough) {
        QByteArray bytes;
        const Result result = waitForBytes(patience, keepWaiting, &bytes);
        if (result != Result::Done) {
            return result;
        }
        if (bytes.isEmpty()) {
            break;
        }
        reply->append(bytes);
        patience = silenceMs();
    }
    return Result::Done;
}

// Whatever has arrived, as soon as something has; empty when the time is over. Looks at the port once at least.
SerialLink::Result SerialLink::waitForBytes(qint64 milliseconds, const KeepWaiting &keepWaiting, QByteArray *bytes) {
    const qint64 end = clock_.elapsed() + milliseconds;
    *bytes = port_.readAll();
    while (bytes->isEmpty()) {
        const qint64 left = qMax<qint64>(end - clock_.elapsed(), 0);
        port_.clearError();
        if (port_.waitForReadyRead(int(qMin(left, kSliceMs)))) {
            *bytes = port_.readAll();
            break;
        }
        if (port_.error() != QSerialPort::TimeoutError && port_.error() != QSerialPort::NoError) {
            return lost();
        }
        if (left == 0) {
            break;
        }
        if (!keepWaiting()) {
            return Result::Interrupted;
        }
    }
    if (!bytes->isEmpty()) {
        lastByteAt_ = clock_.elapsed();
        bytesIn_ += bytes->size();
    }
    return Result::Done;
}

// For a device that hung up the port has no reason of the system, only "Unknown error".
SerialLink::Result SerialLink::lost() {
    loss_ = Failure(QStringLiteral("the line is lost: the device failed or is gone (%1)").arg(port_.errorString()));
    return Result::LineLost;
}

qint64 SerialLink::silenceMs() const {
    return qMax(charactersMs(kFrameGap), kShortestSilenceMs);
}

qint64 SerialLink::charactersMs(double characters) const {
    return qint64(std::ceil(characters * kBitsPerCharacter * 1000 / settings_.baud));
}
