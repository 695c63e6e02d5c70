// Options that take several values, separated by commas. Any thread.
#ifndef DRAVO_HOST_COMMANDS_LIST_OPTIONS_H
#define DRAVO_HOST_COMMANDS_LIST_OPTIONS_H

#include "host/commands/option_set.h"

/// Takes whole numbers within bounds, each once, no more than most. target keeps what it has where there is a fault.
OptionSet::Take takeNumbers(Bounds bounds, int most, std::vector<int> *target);
/// The same of as many as there are, and ranges such as 1-10.
OptionSet::Take takeRanges(Bounds bounds, std::vector<int> *target);

/// Takes names, each once.
OptionSet::Take takeNames(const QStringList &names, const std::function<void(const std::vector<int> &places)> &put);

#endif  // DRAVO_HOST_COMMANDS_LIST_OPTIONS_H
