// read: values once.
#include "host/commands/access.h"
#include "host/commands/command.h"
#include "host/commands/exit_status.h"

namespace {

constexpr Bounds kCount{1, dravo::kMostValues};

void addOptions(OptionSet *options, Options *settings) {
    addVariableArguments(options, settings);
    options->addNumber("count", "N", kCount, &settings->variable.count, "Values to read.");
    addAccessOptions(options, settings);
    options->addCheck([settings] { return resolveVariable(settings); });
}

int run(const Options &settings) {
    Access access(settings);
    const int opened = access.open();
    return opened != kExitDone ? opened : access.read(QString());
}

}  // namespace

const Command kReadCommand{
    "read",
    "Read values once",
    "Bits are shown as 0 or 1, everything else as unsigned decimal numbers unless --as says otherwise.",
    &addOptions,
    &run,
};
