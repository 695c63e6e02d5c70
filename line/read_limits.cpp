#include "line/read_limits.h"

#include <QtCore/QtGlobal>

#include "korvel_dravo_elements.h"

namespace dravo {

namespace {

const int kDataBitsPerRead = kMostElementsPerRead;  // 2000 coils, or 125 registers
const int kModbusAddresses = 65536;

int dataBits(ElementClass elementClass) {
    return elementClass == BitClass ? 1 : elementClass == DoubleWordClass ? 32 : 16;
}

}  // namespace

ReadLimits readLimits(int elemType, int frameLimit) {
    const ElementType *type = findElementType(elemType);
    if (!type || type->registerType != elemType) {
        const ReadLimits none = {1, kNoBound, 0, 16};
        return none;
    }
    const int bits = dataBits(type->elementClass);
    const int mostOnWire = kDataBitsPerRead / bits;
    const int limit = qBound(1, frameLimit, mostOnWire) * (type->elementClass == BitClass ? 8 : 1);
    const ReadLimits limits = {qMin(limit, mostOnWire), type->bound, kModbusAddresses / type->scale - type->upperOffset,
                               bits};
    return limits;
}

}  // namespace dravo
