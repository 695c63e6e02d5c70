#include "codec/protocol.h"

#include "codec/integers.h"
#include "driver/Communication_Protocol.h"

namespace {

const int kReadDataOffset = 3;     // station, function code, byte count
const int kReadReplyOverhead = 5;  // those three and the CRC
const int kWriteReplyLength = 8;

}  // namespace

ExpectedReply readReply(qint64 dataBytes) {
    const ExpectedReply reply = {saturated(dataBytes + kReadReplyOverhead), kReadDataOffset, saturated(dataBytes)};
    return reply;
}

ExpectedReply writeReply(int station) {
    const ExpectedReply reply = {station != 0 ? kWriteReplyLength : 0, 0, 0};
    return reply;
}

void queueRequest(const QByteArray &frame, const ExpectedReply &reply, const RW_VAR &var) {
    const Protocol request = {frame, frame.size(), reply.length, reply.dataOffset, reply.dataLength, var, 0, 0, 0};
    PLC_driver.protocolList.append(request);
    expectReplies(1);
}

void expectReplies(int frameTotal) {
    PLC_driver.comInfo->frameDone = 0;
    PLC_driver.comInfo->frameTotal = frameTotal;
}
