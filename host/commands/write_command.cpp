// write: values, read back.
#include "host/commands/access.h"
#include "host/commands/command.h"
#include "host/commands/exit_status.h"
#include "host/commands/format_options.h"
#include "host/tags/value_text.h"
#include "host/tags/variable_faults.h"
#include "korvel_dravo_elements.h"

namespace {

constexpr int kMostCoils = 1968;  // that one Modbus write carries; the driver sends coils in one request

QStringList check(Options *settings) {
    dravo::Variable &variable = settings->variable;
    const QStringList &texts = settings->values;
    variable.count = texts.size();
    QStringList faults = resolveVariable(settings);
    const dravo::ElementType *type = dravo::findElementType(variable.elemType);
    if (settleFormat(settings).isEmpty()) {
        faults += valueBytes(*kindOfType(variable.elemType), settings->valueFormat, texts).faults;
    }
    if (type->elementClass == dravo::BitClass && texts.size() > kMostCoils) {
        faults.append(QStringLiteral("%1 bits are more than one write carries (%2)").arg(texts.size()).arg(kMostCoils));
    }
    return faults;
}

void addOptions(OptionSet *options, Options *settings) {
    addVariableArguments(options, settings);
    options->addArguments(
        "VALUE",
        QStringLiteral(
            "As --as says: with dec decimal, also negative, 0x hexadecimal or 0b binary; with hex and binary either of "
            "these two; with float also inf, nan and the like. For bits on, off, 1 or 0. One for each element."),
        &settings->values);
    addAccessOptions(options, settings);
    options->addCheck([settings] { return check(settings); });
}

int run(const Options &settings) {
    Access access(settings);
    int status = access.open();
    if (status == kExitDone) {
        access.learnWhetherEchoes();
        status = access.write(valueBytes(settings.variable.kind, settings.valueFormat, settings.values).bytes);
    }
    return status == kExitDone ? access.read(QStringLiteral("read back ")) : status;
}

}  // namespace

const Command kWriteCommand{
    "write",
    "Write values and read them back",
    "'written' means that the controller carried it out; a write that fails may have been carried out as well.\n"
    "\n"
    "Bits are shown as 0 or 1, everything else as unsigned decimal numbers unless --as says otherwise. What is shown "
    "can "
    "be given back.",
    &addOptions,
    &run,
};
