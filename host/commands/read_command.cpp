// read: values once.
#include "host/commands/access.h"
#include "host/commands/command.h"
#include "host/commands/exit_status.h"
#include "korvel_dravo_elements.h"

namespace {

constexpr Bounds kCount{1, kMaxValues};
constexpr int kQueueBound = 1024;  // requests that one read may be cut into

QStringList check(Options *settings) {
    QStringList faults = resolveVariable(settings);
    const Variable &variable = settings->variable;
    // Bits go eight times as many into a request, so theirs are never too many.
    const bool registers = dravo::findElementType(variable.elemType)->elementClass != dravo::BitClass;
    if (faults.isEmpty() && registers && variable.range.count > kQueueBound * settings->driver.frameLimit) {
        faults.append(QStringLiteral("so many values need more requests than the driver queues: raise --frame-limit"));
    }
    return faults;
}

void addOptions(OptionSet *options, Options *settings) {
    addVariableArguments(options, settings);
    options->addNumber("count", "N", kCount, &settings->variable.count, "Values to read.");
    addAccessOptions(options, settings);
    options->addCheck([settings] { return check(settings); });
}

int run(const Options &settings) {
    Access access(settings);
    const int opened = access.open();
    return opened != kExitDone ? opened : access.read(QString());
}

}  // namespace

const Command kReadCommand{
    "read", "Read values once", "Bits are shown as 0 or 1, everything else as unsigned decimal numbers.", &addOptions,
    &run,
};
