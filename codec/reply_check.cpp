#include "codec/reply_check.h"

#include "codec/frame_bytes.h"

namespace {

const int kShortestReply = 6;      // so a 5-byte exception reply is rejected too
const int kStationByte = 0;        // in a controller's frame
const int kRemoteStationByte = 4;  // in a remote frame

}  // namespace

CheckResult checkReply(const Protocol &request, bool remoteMode, const QByteArray &reply) {
    const int station = byteAt(request.frame, remoteMode ? kRemoteStationByte : kStationByte);
    if (station == 0) {
        return kReplyComplete;  // a broadcast: whatever arrived is no reply to it
    }
    if (reply.size() < kShortestReply || byteAt(reply, 0) != station || !endsWithCrc(reply)) {
        return kReplyRejected;
    }
    return request.var.accessFlag != 0 ? kReplyComplete : kReplyToStore;
}
