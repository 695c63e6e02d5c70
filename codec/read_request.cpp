#include "codec/read_request.h"

#include "codec/element_types.h"
#include "codec/frame_bytes.h"
#include "codec/protocol.h"

namespace {

struct ReadForm {
    int functionCode;  // 0: the class is not read as it stands
    int quantity;      // Modbus quantity per element
};
const ReadForm kReadForms[] = {
    {1, 1},  // BitClass
    {3, 1},  // WordClass
    {3, 2},  // DoubleWordClass
    {0, 1},  // WordPairClass
    {0, 1},  // BitInWordClass
};
const ReadForm kNoReadForm = {0, 1};
const int kReadFrameBytes = 8;

}  // namespace

Protocol readRequest(const RW_VAR &var) {
    const dravo::ElementType *type = dravo::findElementType(var.elemType);
    const ReadForm &form = type ? kReadForms[type->elementClass] : kNoReadForm;
    QByteArray frame;
    frame.reserve(kReadFrameBytes);
    putU8(frame, var.station);
    putU8(frame, form.functionCode);
    putU16(frame, startAddress(var.elemType, var.address));
    putU16(frame, qint64(form.quantity) * var.count);
    appendCrc(frame);
    return readProtocol(var, frame, form.functionCode != 0 ? replyDataBytes(var.elemType, var.count) : 0);
}
