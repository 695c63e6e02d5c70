#include "remote/remote_request.h"

#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/protocol.h"

namespace {

const int kFixedBytes = 22;  // the record's fields, the length byte and the checksum

// Fields go high byte first, as the record holds them: nothing is mapped to Modbus addresses.
QByteArray remoteFrame(const RW_VAR &var, const QByteArray &data) {
    QByteArray frame;
    frame.reserve(kFixedBytes + data.size());
    putU8(frame, kFixedBytes + data.size());
    putU8(frame, var.ownerId);
    putU8(frame, var.accessFlag);
    putU8(frame, var.nodeId);
    putU8(frame, var.station);
    putU16(frame, var.elemType);
    putU32(frame, var.address);
    putU16(frame, var.count);
    putU32(frame, var.param1);
    putU32(frame, var.param2);
    frame.append(data);
    appendSum(frame);
    return frame;
}

}  // namespace

Protocol remoteReadRequest(const RW_VAR &var) {
    return readProtocol(var, remoteFrame(var, QByteArray()), replyDataBytes(var.elemType, var.count));
}

Protocol remoteWriteRequest(const RW_VAR &var) {
    return writeProtocol(var, remoteFrame(var, var.data));
}
