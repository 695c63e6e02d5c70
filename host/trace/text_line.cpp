#include "host/trace/text_line.h"

#include <QtCore/QDateTime>

#include "host/trace/frame_text.h"

namespace {

constexpr int kMostBytes = 300;        // shown; Modbus ends at 256
constexpr int kMostCharacters = 2400;  // of values; 2000 coils take 2249

QString cut(const QString &text) {
    return text.size() > kMostCharacters ? text.left(kMostCharacters) + QStringLiteral(" ...") : text;
}

QString hexText(const QByteArray &bytes) {
    const QString hex = QString::fromLatin1(bytes.left(kMostBytes).toHex(' '));
    return bytes.size() > kMostBytes ? hex + QStringLiteral(" ... (%1 bytes)").arg(bytes.size()) : hex;
}

QString directionOf(const TracedFrame &frame) {
    return frame.sent ? QStringLiteral(">") : QStringLiteral("<");
}

QString wordsOf(const TracedFrame &frame) {
    const QString values = valuesText(frame);
    const bool refused = frame.kind == TracedFrame::Reply;  // says so itself
    const QString result =
        frame.good || frame.result.isEmpty() || refused ? QString() : QStringLiteral(", ") + frame.result;
    return subjectText(frame) + QStringLiteral(", ") + frame.verdict + result +
           (values.isEmpty() ? QString() : QStringLiteral(": ") + cut(values));
}

QDateTime dateOf(qint64 wallUs) {
    return QDateTime::fromMSecsSinceEpoch(wallUs / 1000, Qt::UTC);
}

}  // namespace

QString traceLine(const TracedFrame &frame, qint64 wallUs) {
    const bool hasStation = frame.kind != TracedFrame::Damaged;
    return QStringLiteral("%1%2Z %3 %4%5 | %6")
        .arg(dateOf(wallUs).toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz")))
        .arg(wallUs % 1000, 3, 10, QLatin1Char('0'))
        .arg(directionOf(frame), hasStation ? QStringLiteral("station %1 ").arg(frame.station) : QString(),
             wordsOf(frame), hexText(frame.bytes));
}

QString pageLine(const TracedFrame &frame, qint64 wallUs) {
    return QStringLiteral("%1 %2 %3")
        .arg(dateOf(wallUs).toLocalTime().toString(QStringLiteral("HH:mm:ss.zzz")), directionOf(frame), wordsOf(frame));
}
