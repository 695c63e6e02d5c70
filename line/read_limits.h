// What one read request of an element type may hold. Pure; any thread.
#ifndef DRAVO_LINE_READ_LIMITS_H
#define DRAVO_LINE_READ_LIMITS_H

namespace dravo {

/// Most elements that Modbus allows in a read of any type: coils.
enum { kMostElementsPerRead = 2000 };

struct ReadLimits {
    int elementsPerRead;  // most in one request, at least 1
    int bound;            // no request holds elements on both sides of it; kNoBound: there is none
    int end;              // elements 0 to end - 1 have an address on the wire, beyond it 16 bits do not hold it
    int bitsPerElement;   // of data in the reply: 1, 16 or 32

    int dataBytes(int elements) const { return (elements * bitsPerElement + 7) / 8; }
};

/// @param elemType    as carried on the line: 0 to 11, 13, 19. Any other code has no elements (end is 0).
/// @param frameLimit  elements in a request, eight times as many of the bit types; below 1 counts as 1. Modbus allows
///                    2000 coils or 125 registers, which are 62 elements of type 13.
ReadLimits readLimits(int elemType, int frameLimit);

}  // namespace dravo

#endif  // DRAVO_LINE_READ_LIMITS_H
