#include "codec/bit_write.h"

#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/protocol.h"
#include "codec/read_request.h"
#include "codec/write_request.h"

namespace {

const int kReplyValueAt = 3;  // station, function code, byte count

// Where the value of a one-register write lies: behind station, function code and start address, and of function 16
// behind quantity and byte count too. The CRC follows the value.
int valueIndex(const QByteArray &writeFrame) {
    return byteAt(writeFrame, 1) == 6 ? 4 : 7;
}

int withBit(int word, int bit, bool on) {
    if (bit < 0) {
        return word;
    }
    return on ? word | 1 << bit : word & ~(1 << bit);
}

}  // namespace

bool isBitWrite(const RW_VAR &var) {
    return isOfClass(var.elemType, dravo::BitInWordClass);
}

BitWrite bitWrite(const RW_VAR &var) {
    RW_VAR word = var;
    word.elemType = getPlcReg(var.elemType);
    word.address = var.address / 16;
    word.count = 1;
    static const QByteArray noValueYet(2, '\0');  // shared by all
    word.data = noValueYet;

    RW_VAR mergeRead = word;
    mergeRead.accessFlag = 0;
    mergeRead.param1 = kMergeRead;
    word.accessFlag = 1;
    word.param1 = 0;
    BitWrite halves = {readRequest(mergeRead), writeRequest(word)};
    return halves;
}

void completeBitWrite(QByteArray &pendingFrame, const QByteArray &reply, int bitAddress, bool on) {
    if (reply.size() <= kReplyValueAt + 2 || pendingFrame.size() < 2) {
        return;
    }
    const int valueAt = valueIndex(pendingFrame);
    if (pendingFrame.size() < valueAt + 4) {
        return;
    }
    const int read = byteAt(reply, kReplyValueAt) * 256 + byteAt(reply, kReplyValueAt + 1);
    const int word = withBit(read, bitAddress % 16, on);
    char *bytes = pendingFrame.data();
    bytes[valueAt] = char(word >> 8);
    bytes[valueAt + 1] = char(word & 0xFF);
    replaceCrc(pendingFrame, valueAt + 2);
}
