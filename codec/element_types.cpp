#include "codec/element_types.h"

#include "codec/integers.h"
#include "korvel_dravo_port.h"

using dravo::ElementType;
using dravo::findElementType;
using dravo::kElementTypes;

static_assert(dravo::kElementTypeCount == 22, "one row per element type");

bool isOfClass(int code, dravo::ElementClass elementClass) {
    const ElementType *type = findElementType(code);
    return type && type->elementClass == elementClass;
}

bool isBitType(int code) {
    return isOfClass(code, dravo::BitClass);
}

int cacheEntrySize(int code) {
    return isBitType(code) ? 1 : isOfClass(code, dravo::DoubleWordClass) ? 4 : 2;
}

qint64 replyDataBytes(int code, int count) {
    return isBitType(code) ? (qint64(count) + 7) / 8 : qint64(count) * cacheEntrySize(code);
}

int listFunctionBound(int code) {
    const ElementType *type = findElementType(code);
    return type && type->listFunctionsCut ? type->bound : dravo::kNoBound;
}

int getPlcReg(int type) {
    const ElementType *row = findElementType(type);
    return row ? row->registerType : type;
}

int startAddress(int code, int address) {
    const ElementType *row = findElementType(code);
    if (!row || row->elementClass == dravo::BitInWordClass) {
        return 0;
    }
    const ElementType &segment = kElementTypes[row->registerType];
    const int offset = address < segment.bound ? segment.lowerOffset : segment.upperOffset;
    return wrapped((qint64(address) + offset) * segment.scale);
}

int get_offset_address(int &type, int &address) {
    return startAddress(type, address);
}

int updateRwVar(RW_VAR *var) {
    const ElementType *type = findElementType(var->elemType);
    if (!type) {
        return 1;
    }
    const qint64 count = var->count;
    switch (type->elementClass) {
        case dravo::BitClass:
        case dravo::WordClass:
            break;
        case dravo::WordPairClass:
            var->count = saturated((count + 1) / 2 * 2);
            break;
        case dravo::DoubleWordClass:
            var->count = saturated((count + 1) / 2);
            break;
        case dravo::BitInWordClass:
            var->count = saturated((var->address % 16 + count + 15) / 16);
            var->address /= 16;
            break;
    }
    var->elemType = type->registerType;
    return 0;
}
