// The element types written down a second time, so that a wrong row of the library's table is seen. Pure.
#ifndef DRAVO_FUZZ_DRIVER_TYPES_H
#define DRAVO_FUZZ_DRIVER_TYPES_H

#include "korvel_dravo_port.h"

namespace reference {

enum Class { Bit, Word, DoubleWord, Pair, BitInWord, NoType };

Class classOf(int type);
/// The type that carries it on the wire.
int wireType(int type);
/// Not narrowed: the wire carries its low 16 bits.
qint64 startAddress(int type, qint64 address);
/// First element of the upper area, of requests that the driver makes; INT_MIN: one area.
int bound(int type);
/// The same of the exported list functions, which leave some types whole.
int listFunctionBound(int type);
/// Below 0: unusable.
int elementAddress(int type, const QString &text);
/// False: no element type; var is unchanged then.
bool normalise(RW_VAR &var);
/// The nearest int.
int narrowed(qint64 value);

}  // namespace reference

#endif  // DRAVO_FUZZ_DRIVER_TYPES_H
