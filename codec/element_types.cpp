#include "codec/element_types.h"

#include "codec/integers.h"
#include "korvel_dravo_port.h"

using dravo::ElementType;
using dravo::findElementType;
using dravo::kElementTypes;

static_assert(dravo::kElementTypeCount == 22, "one row per element type");

bool isBitType(int code) {
    const ElementType *type = findElementType(code);
    return type && type->elementClass == dravo::BitClass;
}

int cacheEntrySize(int code) {
    const ElementType *type = findElementType(code);
    if (type && type->elementClass == dravo::BitClass) {
        return 1;
    }
    return type && type->elementClass == dravo::DoubleWordClass ? 4 : 2;
}

int listFunctionBound(int code) {
    const ElementType *type = findElementType(code);
    return type && type->listFunctionsCut ? type->bound : dravo::kNoBound;
}

int getPlcReg(int type) {
    const ElementType *row = findElementType(type);
    return row ? row->registerType : type;
}

int get_offset_address(int &type, int &address) {
    const ElementType *row = findElementType(type);
    if (!row || row->elementClass == dravo::BitInWordClass) {
        return 0;
    }
    const ElementType &segment = kElementTypes[row->registerType];
    const int offset = address < segment.bound ? segment.lowerOffset : segment.upperOffset;
    return wrapped((qint64(address) + offset) * segment.scale);
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
