#include "cache/reply_storage.h"

#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/value_layout.h"

namespace {

// The request's data bytes, or as many of them as the reply holds.
QByteArray replyData(const Protocol &request, const QByteArray &reply) {
    const int available = reply.size() - request.dataOffset;
    if (request.dataOffset < 0 || available <= 0 || request.dataLength <= 0) {
        return QByteArray();
    }
    return reply.mid(request.dataOffset, qMin(request.dataLength, available));
}

// What the data hold of count bits, one byte each.
QByteArray replyBits(const QByteArray &data, int count) {
    return unpackedBits(data, 0, int(qBound<qint64>(0, count, qint64(data.size()) * 8)));
}

QByteArray replyWords(QByteArray data) {
    padTo(data, data.size() + data.size() % 2);
    return reversedElements(data, 2);
}

QByteArray replyValues(dravo::ElementClass elementClass, const QByteArray &data, int count) {
    switch (elementClass) {
        case dravo::BitClass:
            return replyBits(data, count);
        case dravo::WordClass:
            return replyWords(data);
        case dravo::DoubleWordClass:
            return reversedElements(data, 4);
        case dravo::WordPairClass:
        case dravo::BitInWordClass:
            break;
    }
    return QByteArray();
}

}  // namespace

void storeReply(ValueCache &cache, const Protocol &request, const QByteArray &reply) {
    const RW_VAR &var = request.var;
    if (const dravo::ElementType *type = dravo::findElementType(var.elemType)) {
        const QByteArray values = replyValues(type->elementClass, replyData(request, reply), var.count);
        storeRun(cache, var.station, var.elemType, var.address, values);
    }
}
