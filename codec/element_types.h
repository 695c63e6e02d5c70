// What the driver asks of the table of element types. Pure; any thread.
#ifndef DRAVO_CODEC_ELEMENT_TYPES_H
#define DRAVO_CODEC_ELEMENT_TYPES_H

#include "korvel_dravo_elements.h"

/// Whether code is one of the bit types 0 to 6.
bool isBitType(int code);

/// Bytes of a cache entry: 1 for a bit, 4 for a double word, 2 for everything else, unknown codes included.
int cacheEntrySize(int code);

/// The bound at which the exported list functions cut a request of this type, or kNoBound.
int listFunctionBound(int code);

#endif  // DRAVO_CODEC_ELEMENT_TYPES_H
