// The 22 element types of the controller's memory, in one table that everything else reads. Pure; any thread.
#ifndef DRAVO_CODEC_ELEMENT_TYPES_H
#define DRAVO_CODEC_ELEMENT_TYPES_H

#include <climits>

/// How an element is read, written and cached.
enum ElementClass {
    BitClass,         // one coil
    WordClass,        // one register
    DoubleWordClass,  // two registers under one element address
    WordPairClass,    // two consecutive elements of its register type
    BitInWordClass    // bit address % 16 of word address / 16 of its register type
};

/// No element address lies below it: the type has one segment, and its offset stands under upperOffset.
const int kNoBound = INT_MIN;

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

/// The row of a type code, null for a code outside 0 to 21.
const ElementType *findElementType(int code);

/// Whether code is one of the bit types 0 to 6.
bool isBitType(int code);

/// Bytes of a cache entry: 1 for a bit, 4 for a double word, 2 for everything else, unknown codes included.
int cacheEntrySize(int code);

/// The bound at which the exported list functions cut a request of this type, or kNoBound.
int listFunctionBound(int code);

/// The bound at which the address map of this type has its gap, or kNoBound. Of a word-pair type it is the bound of its
/// register type; bit addresses inside words have none.
int addressMapBound(int code);

#endif  // DRAVO_CODEC_ELEMENT_TYPES_H
