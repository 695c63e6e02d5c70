#include "host/trace/frame_text.h"

#include <QtCore/QStringList>

#include "host/plan/element_range.h"
#include "host/trace/frame_values.h"
#include "korvel_dravo_elements.h"

namespace {

constexpr int kExceptionBit = 0x80;
constexpr int kExceptionReply = 5;
constexpr int kNotGood = -1;  // a result code that the driver does not have

QString functionName(int function) {
    switch (function) {
        case 1:
            return QStringLiteral("read coils");
        case 2:
            return QStringLiteral("read discrete inputs");
        case 3:
            return QStringLiteral("read holding registers");
        case 4:
            return QStringLiteral("read input registers");
        case 5:
            return QStringLiteral("write single coil");
        case 6:
            return QStringLiteral("write single register");
        case 15:
            return QStringLiteral("write multiple coils");
        case 16:
            return QStringLiteral("write multiple registers");
        default:
            return QStringLiteral("function %1").arg(function);
    }
}

QString elementsText(const TracedFrame &frame) {
    return frame.elements.count > 0 ? QStringLiteral(" (type %1)").arg(elementRangeText(frame.elements)) : QString();
}

QString rangeText(const FrameAddresses &addresses) {
    if (addresses.quantity <= 0) {
        return QString();
    }
    const QString first = QStringLiteral(" %1").arg(addresses.start);
    return addresses.quantity == 1 ? first
                                   : first + QStringLiteral("-%1").arg(addresses.start + addresses.quantity - 1);
}

// The answers to remote frames name no function.
QString remoteText(const TracedFrame &frame) {
    const QByteArray &request = frame.kind == TracedFrame::Reply ? frame.request : frame.bytes;
    if (request.size() < 4) {
        return QStringLiteral("answer to a remote frame");
    }
    const bool write = request.at(2) != 0;
    const QString node = QString::number(uchar(request.at(3)));
    return QStringLiteral("%1 through node %2%3")
        .arg(write ? QStringLiteral("write") : QStringLiteral("read"), node, elementsText(frame));
}

}  // namespace

QString subjectText(const TracedFrame &frame) {
    if (frame.kind == TracedFrame::Damaged) {
        return frame.bytes.size() == 1 ? QStringLiteral("1 byte") : QStringLiteral("%1 bytes").arg(frame.bytes.size());
    }
    const int function = frame.bytes.size() > 1 ? uchar(frame.bytes.at(1)) : 0;
    const bool refuses =
        frame.kind == TracedFrame::Reply && frame.bytes.size() == kExceptionReply && function >= kExceptionBit;
    const QString modbus = functionName(refuses ? function - kExceptionBit : function) + rangeText(addressesOf(frame)) +
                           elementsText(frame);
    const QString about = frame.remote ? remoteText(frame) : modbus;
    return refuses ? about + QLatin1Char(' ') + dravo::describeResult(kNotGood, uchar(frame.bytes.at(2))) : about;
}

QString valuesText(const TracedFrame &frame) {
    const FrameValues values = valuesOf(frame);
    if (values.bits > 0) {
        QString text;
        for (int i = 0; i < values.bits; ++i) {
            text += i > 0 && i % 8 == 0 ? QStringLiteral(" ") : QString();
            text += QLatin1Char((uchar(values.data.at(i / 8)) >> (i % 8) & 1) != 0 ? '1' : '0');
        }
        return text;
    }
    const dravo::ElementType *type =
        frame.elements.count > 0 ? dravo::findElementType(frame.elements.elemType) : nullptr;
    const int bytes = type != nullptr && type->elementClass == dravo::DoubleWordClass ? 4 : 2;
    QStringList texts;
    for (int at = 0; at + bytes <= values.data.size(); at += bytes) {
        quint32 value = 0;
        for (int i = 0; i < bytes; ++i) {
            value = value << 8 | uchar(values.data.at(at + i));
        }
        texts.append(QString::number(value));
    }
    return texts.join(QLatin1Char(' '));
}
