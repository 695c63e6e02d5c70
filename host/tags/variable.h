// A variable as the user names it, resolved once to the elements it stands for. Pure; any thread.
#ifndef DRAVO_HOST_TAGS_VARIABLE_H
#define DRAVO_HOST_TAGS_VARIABLE_H

#include <QtCore/QList>
#include <QtCore/QString>

#include "korvel_dravo_port.h"

enum class ValueKind { Bit, Word, DoubleWord };  // what one value of the variable is, as the user sees it

/// Most values in one variable.
enum { kMaxValues = 2000 };

/// Elements of one normalised type at one station: what a request of the driver covers.
struct ElementRange {
    int station;
    int elemType;
    int address;
    int count;
};

struct Variable {
    Variable();

    QString label;
    QString addressText;  // as written
    int elemType;
    int station;
    int count;  // values that the user sees: bits, registers or 32-bit values

    // From here on: worked out by resolve().
    ValueKind kind;
    int driverCount;     // the count that the driver's calls take: 32-bit values count as two registers
    int elementAddress;  // of the first value; a bit in a word is word * 16 + bit
    int firstBit;        // of a bit in a word, its place in the first word of range; else 0
    ElementRange range;  // the elements that a read covers
};

/// A fault of a variable and the field that has it: "type", "address", "station" or "count".
struct VariableFault {
    QString field;
    QString reason;
};

/// Works out the elements of a variable from its first five fields.
/// @return everything that keeps it from being read: type, address and its place in the controller's 65,536 coils or
///         registers, station, count. Empty: usable. Otherwise what was worked out is not to be used.
QList<VariableFault> resolve(Variable *variable);

/// A read record of a usable variable, not yet normalised; identifiers, node and mode are zero.
RW_VAR readRecord(const Variable &variable);

#endif  // DRAVO_HOST_TAGS_VARIABLE_H
