// The trace as a pcapng file: a section, an interface, and a packet for each frame. A packet is an exported protocol
// data unit: tags that name its dissector, then the frame with its CRC.
#include <QtCore/QtEndian>

#include "host/trace/trace_format.h"

namespace {

enum BlockType : quint32 { kInterfaceBlock = 1, kPacketBlock = 6, kSectionBlock = 0x0A0D0D0A };
constexpr quint32 kByteOrderMagic = 0x1A2B3C4D;
constexpr quint16 kExportedPdu = 252;  // link type
constexpr quint16 kDissectorTag = 12;

enum Option : quint16 { kEndOfOptions = 0, kComment = 1, kPacketFlags = 2, kApplication = 4, kDropCount = 4 };
constexpr quint32 kInbound = 1;
constexpr quint32 kOutbound = 2;

template <typename Number>
QByteArray little(Number number) {
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray big(quint16 number) {
    QByteArray bytes(sizeof number, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray padded(const QByteArray &bytes) {
    return bytes + QByteArray((4 - bytes.size() % 4) % 4, '\0');
}

QByteArray option(Option code, const QByteArray &value) {
    return little(quint16(code)) + little(quint16(value.size())) + padded(value);
}

QByteArray block(BlockType type, const QByteArray &body) {
    const QByteArray length = little(quint32(body.size() + 12));
    return little(quint32(type)) + length + body + length;
}

QByteArray head() {
    const QByteArray section = little(kByteOrderMagic) + little(quint16(1)) + little(quint16(0)) +
                               little(qint64(-1)) +  // of unknown length
                               option(kApplication, "dravo-host") + option(kEndOfOptions, QByteArray());
    const QByteArray interface = little(kExportedPdu) + little(quint16(0)) + little(quint32(0));
    return block(kSectionBlock, section) + block(kInterfaceBlock, interface);
}

// A remote frame is none of Modbus; the answer to it looks like one.
QByteArray packetOf(const TracedFrame &frame) {
    const bool isModbus = !frame.remote || frame.kind == TracedFrame::Reply;
    const QByteArray dissector = isModbus ? QByteArray("mbrtu\0\0\0", 8) : QByteArray("data", 4);
    return big(kDissectorTag) + big(quint16(dissector.size())) + dissector + big(0) + big(0) + frame.bytes;
}

QByteArray commentOf(const TracedFrame &frame) {
    const QString result = frame.result.isEmpty() ? QString() : QStringLiteral(", ") + frame.result;
    return ((frame.sent ? QStringLiteral("sent: ") : QStringLiteral("received: ")) + frame.verdict + result).toUtf8();
}

QByteArray record(const TracedFrame &frame, qint64 wallUs, qint64 leftOut) {
    const QByteArray packet = packetOf(frame);
    const quint64 us = quint64(wallUs);
    QByteArray body = little(quint32(0)) + little(quint32(us >> 32)) + little(quint32(us)) +
                      little(quint32(packet.size())) + little(quint32(packet.size())) + padded(packet) +
                      option(kComment, commentOf(frame)) +
                      option(kPacketFlags, little(frame.sent ? kOutbound : kInbound));
    if (leftOut > 0) {
        body += option(kDropCount, little(quint64(leftOut)));
    }
    return block(kPacketBlock, body + option(kEndOfOptions, QByteArray()));
}

}  // namespace

const TraceFormat kPacketTrace{&head, &record};
