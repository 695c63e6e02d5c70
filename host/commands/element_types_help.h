// The table of element types as "dravo-host help types" shows it, made of the rows of the table itself. Any thread.
#ifndef DRAVO_HOST_COMMANDS_ELEMENT_TYPES_HELP_H
#define DRAVO_HOST_COMMANDS_ELEMENT_TYPES_HELP_H

#include <QtCore/QStringList>

/// The help topic.
constexpr char kTypesTopic[] = "types";

/// What stands above the table, paragraphs on a line each.
QStringList elementTypesNotes();
/// Title and rows, none wider than 72 characters: one for each segment of a type's addresses.
QStringList elementTypesTable();
/// Both, broken at 80 columns.
QString elementTypesHelp();

#endif  // DRAVO_HOST_COMMANDS_ELEMENT_TYPES_HELP_H
