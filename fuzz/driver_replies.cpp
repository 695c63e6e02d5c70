#include "fuzz/driver_replies.h"

#include <algorithm>

#include "fuzz/driver_frames.h"

namespace {

const int kLongestReply = 2048;

/// A reply of size bytes from the station that was asked, with a right CRC.
QByteArray replyOf(Choices &choices, const Protocol &request, bool remoteMode, int size) {
    if (size < 3) {
        return QByteArray(std::max(size, 0), '\1');
    }
    QByteArray reply = request.frame.mid(remoteMode ? 4 : 0, 1) + request.frame.mid(1, 1);
    reply.append(static_cast<char>(request.dataLength)).append(choices.bytes(64));
    const char filling = static_cast<char>(choices.byte());
    return reference::withCrc(reply.leftJustified(size - 2, filling, true));
}

int expectedSize(const Protocol &request) {
    return std::clamp(request.replyLength, 0, kLongestReply);
}

}  // namespace

Reply goodReply(Choices &choices, const Protocol &request, bool remoteMode) {
    const QByteArray bytes = replyOf(choices, request, remoteMode, expectedSize(request));
    return {false, bytes, request.replyLength > kLongestReply ? request.replyLength : bytes.size()};
}

Reply anyReply(Choices &choices, const Protocol *request, bool remoteMode) {
    const int manner = request == nullptr ? 5 : choices.below(8);
    switch (manner) {
        case 0: {  // a byte altered
            Reply reply = goodReply(choices, *request, remoteMode);
            if (!reply.bytes.isEmpty()) {
                const int index = choices.byte() % reply.bytes.size();
                reply.bytes[index] = static_cast<char>(reply.bytes.at(index) ^ (1 << choices.below(8)));
            }
            return reply;
        }
        case 1: {  // cut, and the host says what it wanted
            Reply reply = goodReply(choices, *request, remoteMode);
            reply.bytes.chop(choices.below(8));
            return reply;
        }
        case 2: {  // shorter or longer than expected, but a frame; the host may say either length
            const int cut = choices.below(16);
            const int size = expectedSize(*request) - (cut < 9 ? cut : 8 - cut);
            const QByteArray bytes = replyOf(choices, *request, remoteMode, size);
            return {false, bytes, choices.oneIn(2) ? bytes.size() : request->replyLength};
        }
        case 3: {  // a length of its own
            Reply reply = goodReply(choices, *request, remoteMode);
            reply.length = choices.number();
            return reply;
        }
        case 4:
            return {choices.oneIn(2), QByteArray(), 0};
        case 5: {
            const QByteArray bytes = choices.bytes(40);
            return {choices.oneIn(4), bytes, choices.oneIn(2) ? choices.number() : bytes.size()};
        }
        case 6: {  // a station answers that was not asked
            Reply reply = goodReply(choices, *request, remoteMode);
            if (reply.bytes.size() > 2) {
                reply.bytes.chop(2);
                reply.bytes[0] = static_cast<char>(reply.bytes.at(0) + 1 + choices.below(4));
                reply.bytes = reference::withCrc(reply.bytes);
            }
            return reply;
        }
        default:
            return goodReply(choices, *request, remoteMode);
    }
}
