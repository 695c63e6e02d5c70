#include "codec/element_types.h"

#include "codec/integers.h"
#include "korvel_dravo_port.h"

namespace {

// clang-format off
const ElementType kElementTypes[] = {
    //        class           register     bound  lower  upper  scale    cut  text
    /*  0 */ {BitClass,              0, kNoBound,     0,  1200,     1, false,    8},
    /*  1 */ {BitClass,              1, kNoBound,     0,     0,     1, false,    8},
    /*  2 */ {BitClass,              2,     2048,  2000,  9952,     1, true,    10},
    /*  3 */ {BitClass,              3,      256,  4400, 29744,     1, true,    10},
    /*  4 */ {BitClass,              4,     1024,  6000, 29976,     1, true,    10},
    /*  5 */ {BitClass,              5,      256,  8000, 10744,     1, true,    10},
    /*  6 */ {BitClass,              6,      256,  9200,  9744,     1, true,    10},
    /*  7 */ {WordClass,             7,     8000,     0, 42000,     1, false,   10},
    /*  8 */ {WordClass,             8,      256,  8000, 11744,     1, true,    10},
    /*  9 */ {WordClass,             9,      256,  9000, 10744,     1, true,    10},
    /* 10 */ {WordClass,            10, kNoBound,     0,  9500,     1, false,   10},
    /* 11 */ {WordClass,            11, kNoBound,     0,  8500,     1, false,   10},
    /* 12 */ {WordPairClass,         7, kNoBound,     0,     0,     1, false,   10},  // address: row 7
    /* 13 */ {DoubleWordClass,      13,      256,  4650,  4744,     2, true,    10},
    /* 14 */ {WordPairClass,         8, kNoBound,     0,     0,     1, false,   10},  // address: row 8
    /* 15 */ {BitInWordClass,        7, kNoBound,     0,     0,     1, false,   10},  // no address of its own
    /* 16 */ {BitInWordClass,        8, kNoBound,     0,     0,     1, false,   10},  // no address of its own
    /* 17 */ {BitInWordClass,       11, kNoBound,     0,     0,     1, false,   10},  // no address of its own
    /* 18 */ {WordPairClass,        11, kNoBound,     0,     0,     1, false,   10},  // address: row 11
    /* 19 */ {WordClass,            19, kNoBound,     0, 13000,     1, false,   10},
    /* 20 */ {BitInWordClass,       19, kNoBound,     0,     0,     1, false,   10},  // no address of its own
    /* 21 */ {WordPairClass,        19, kNoBound,     0,     0,     1, false,   10},  // address: row 19
};
// clang-format on
const unsigned int kElementTypeCount = sizeof kElementTypes / sizeof kElementTypes[0];
static_assert(kElementTypeCount == 22, "one row per element type");

}  // namespace

const ElementType *findElementType(int code) {
    const unsigned int row = static_cast<unsigned int>(code);  // negative codes land above the table
    return row < kElementTypeCount ? &kElementTypes[row] : nullptr;
}

bool isBitType(int code) {
    const ElementType *type = findElementType(code);
    return type && type->elementClass == BitClass;
}

int cacheEntrySize(int code) {
    const ElementType *type = findElementType(code);
    if (type && type->elementClass == BitClass) {
        return 1;
    }
    return type && type->elementClass == DoubleWordClass ? 4 : 2;
}

int listFunctionBound(int code) {
    const ElementType *type = findElementType(code);
    return type && type->listFunctionsCut ? type->bound : kNoBound;
}

int addressMapBound(int code) {
    const ElementType *type = findElementType(code);
    if (!type || type->elementClass == BitInWordClass) {
        return kNoBound;
    }
    return kElementTypes[type->registerType].bound;
}

int getPlcReg(int type) {
    const ElementType *row = findElementType(type);
    return row ? row->registerType : type;
}

int get_offset_address(int &type, int &address) {
    const ElementType *row = findElementType(type);
    if (!row || row->elementClass == BitInWordClass) {
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
        case BitClass:
        case WordClass:
            break;
        case WordPairClass:
            var->count = saturated((count + 1) / 2 * 2);
            break;
        case DoubleWordClass:
            var->count = saturated((count + 1) / 2);
            break;
        case BitInWordClass:
            var->count = saturated((var->address % 16 + count + 15) / 16);
            var->address /= 16;
            break;
    }
    var->elemType = type->registerType;
    return 0;
}
