// The 22 element types of a controller's memory in one table: driver, line engine and tools read it, and nothing else
// repeats it. Constants and pure functions; no Qt; any thread.
#ifndef KORVEL_DRAVO_ELEMENTS_H
#define KORVEL_DRAVO_ELEMENTS_H

#include <limits.h>

namespace dravo {

/// How an element is read, written and cached.
enum ElementClass {
    BitClass,         // one coil
    WordClass,        // one register
    DoubleWordClass,  // two registers under one element address
    WordPairClass,    // two consecutive elements of its register type
    BitInWordClass    // bit address % 16 of word address / 16 of its register type
};

/// No element address lies below it: the type has one segment, and its offset stands under upperOffset.
static const int kNoBound = INT_MIN;

struct ElementType {
    ElementClass elementClass;
    int registerType;       // type that carries it on the wire; its own code where it stands alone
    int bound;              // first element address of the upper segment; kNoBound: one segment
    int lowerOffset;        // added to addresses below bound
    int upperOffset;        // added from bound on
    int scale;              // Modbus addresses per element; multiplies after the offset is added
    bool listFunctionsCut;  // the exported list functions cut at bound; the driver's own lists cut at every bound
    int textBase;           // base of a plain address text
};

// clang-format off
static const ElementType kElementTypes[] = {
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
enum { kElementTypeCount = sizeof kElementTypes / sizeof kElementTypes[0] };

/// The row of a type code, null for a code outside 0 to 21.
inline const ElementType *findElementType(int code) {
    // NOLINTNEXTLINE(modernize-use-nullptr): hosts of C++98 read this too
    return code >= 0 && code < kElementTypeCount ? &kElementTypes[code] : 0;
}

/// The bound at which the address map of a type has its gap, or kNoBound. Of a word-pair type it is the bound of its
/// register type; bit addresses inside words have none.
inline int addressMapBound(int code) {
    const ElementType *type = findElementType(code);
    return type && type->elementClass != BitInWordClass ? kElementTypes[type->registerType].bound : kNoBound;
}

}  // namespace dravo

#endif  // KORVEL_DRAVO_ELEMENTS_H
