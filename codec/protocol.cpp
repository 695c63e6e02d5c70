#include "codec/protocol.h"

#include "codec/integers.h"

namespace {

const int kReadDataOffset = 3;     // station, function code, byte count
const int kReadReplyOverhead = 5;  // those three and the CRC
const int kWriteReplyLength = 8;

}  // namespace

Protocol readProtocol(const RW_VAR &var, const QByteArray &frame, qint64 dataBytes) {
    const int replyLength = saturated(dataBytes + kReadReplyOverhead);
    Protocol request = {frame, frame.size(), replyLength, kReadDataOffset, saturated(dataBytes), var, 0, 0, 0};
    return request;
}

Protocol writeProtocol(const RW_VAR &var, const QByteArray &frame) {
    const int replyLength = var.station != 0 ? kWriteReplyLength : 0;
    Protocol request = {frame, frame.size(), replyLength, 0, 0, var, 0, 0, 0};
    return request;
}
