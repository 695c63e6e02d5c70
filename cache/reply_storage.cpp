#include "cache/reply_storage.h"

#include <algorithm>

#include "codec/element_types.h"

namespace {

// The request's data bytes, or as many of them as the reply holds. They stay the reply's.
struct ReplyData {
    ReplyData(const Protocol &request, const QByteArray &reply) : bytes(reply.constData()), size(0) {
        const int available = reply.size() - request.dataOffset;
        if (request.dataOffset >= 0 && available > 0 && request.dataLength > 0) {
            bytes += request.dataOffset;
            size = std::min(request.dataLength, available);
        }
    }

    const char *bytes;
    int size;
};

void storeBits(EntryRun run, const ReplyData &data, int count) {
    const qint64 bits = std::min(qint64(count), qint64(data.size) * 8);
    for (int i = 0; i < bits; ++i) {
        *run.next() = char(data.bytes[i / 8] >> (i % 8) & 1);
    }
}

void storeWords(EntryRun run, const ReplyData &data) {
    const char *const end = data.bytes + (data.size - data.size % 2);
    for (const char *from = data.bytes; from != end; from += 2) {
        std::reverse_copy(from, from + 2, run.next());
    }
    if (data.size % 2 != 0) {
        char *last = run.next();
        last[0] = 0;
        last[1] = *end;
    }
}

void storeDoubleWords(EntryRun run, const ReplyData &data) {
    const char *const end = data.bytes + (data.size - data.size % 4);
    for (const char *from = data.bytes; from != end; from += 4) {
        std::reverse_copy(from, from + 4, run.next());
    }
}

}  // namespace

void storeReply(ValueCache &cache, const Protocol &request, const QByteArray &reply) {
    const RW_VAR &var = request.var;
    const dravo::ElementType *type = dravo::findElementType(var.elemType);
    if (!type) {
        return;
    }
    const EntryRun run(cache, var.station, var.elemType, var.address);
    const ReplyData data(request, reply);
    switch (type->elementClass) {
        case dravo::BitClass:
            storeBits(run, data, var.count);
            break;
        case dravo::WordClass:
            storeWords(run, data);
            break;
        case dravo::DoubleWordClass:
            storeDoubleWords(run, data);
            break;
        case dravo::WordPairClass:
        case dravo::BitInWordClass:
            break;
    }
}
