// A variable as the user names it, and what the driver makes of it. Pure; any thread.
#ifndef DRAVO_HOST_VARIABLE_H
#define DRAVO_HOST_VARIABLE_H

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include "korvel_dravo_port.h"

enum class ValueKind { Bit, Word, DoubleWord };  // what one value of the variable is, as the user sees it

/// Most values in one variable.
enum { kMaxValues = 2000 };

struct Variable {
    QString label;
    int elemType = 0;
    QString addressText;
    int station = 1;
    int count = 1;  // values that the user sees: bits, registers or 32-bit values
};

/// Elements of one normalised type at one station: what a request of the driver covers.
struct ElementRange {
    int station = 0;
    int elemType = 0;
    int address = 0;
    int count = 0;
};

/// A fault of a variable and the field that has it: "type", "address", "station" or "count".
struct VariableFault {
    QString field;
    QString reason;
};

/// elemType 0 to 21.
ValueKind valueKind(int elemType);

/// The count that the driver's calls take: 32-bit values count as two registers.
int driverCount(const Variable &variable);

/// Everything that keeps the variable from being read: type, address and its place in the controller's 65,536 coils or
/// registers, station, count. Empty: usable.
QVector<VariableFault> variableFaults(const Variable &variable);

/// A read record of the variable, not yet normalised; identifiers, node and mode are zero.
RW_VAR readRecord(const Variable &variable);

/// The elements that reads of a usable variable cover.
ElementRange elementRange(const Variable &variable);

/// The elements that hold value number index of a usable variable.
ElementRange elementsOfValue(const Variable &variable, int index);

#endif  // DRAVO_HOST_VARIABLE_H
