// What the driver asks of the table of element types. Pure; any thread.
#ifndef DRAVO_CODEC_ELEMENT_TYPES_H
#define DRAVO_CODEC_ELEMENT_TYPES_H

#include <QtCore/QtGlobal>

#include "korvel_dravo_elements.h"

/// Whether code is of that class; a code outside 0 to 21 is of none.
bool isOfClass(int code, dravo::ElementClass elementClass);

/// Whether code is one of the bit types 0 to 6.
bool isBitType(int code);

/// Bytes of a cache entry: 1 for a bit, 4 for a double word, 2 for everything else, unknown codes included.
int cacheEntrySize(int code);

/// Bytes that count elements take in a reply: packed bits, 4 per double word, else 2 each. Negative for a negative
/// count.
qint64 replyDataBytes(int code, int count);

/// The Modbus start address, as get_offset_address gives it.
int startAddress(int code, int address);

/// The bound at which the exported list functions cut a request of this type, or kNoBound.
int listFunctionBound(int code);

#endif  // DRAVO_CODEC_ELEMENT_TYPES_H
