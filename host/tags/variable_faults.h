// What keeps a variable from being read, as the tool sees it: stricter than the engine with bits inside words. Pure;
// any thread.
#ifndef DRAVO_HOST_TAGS_VARIABLE_FAULTS_H
#define DRAVO_HOST_TAGS_VARIABLE_FAULTS_H

#include <QtCore/QList>
#include <optional>

#include "korvel_dravo_line.h"

/// Resolves a variable. @return every fault, each with the value that has it.
QList<dravo::VariableFault> resolveWritten(dravo::Variable *variable);

/// What the values of an element type are. Empty: there is no such type.
std::optional<dravo::ValueKind> kindOfType(int elemType);

#endif  // DRAVO_HOST_TAGS_VARIABLE_FAULTS_H
