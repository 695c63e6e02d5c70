#include "host/commands/format_options.h"

#include "host/tags/quoted_text.h"
#include "host/tags/variable_faults.h"

namespace {

/// A scale or an offset, looked at by itself so that a fault names the line of an option file.
OptionSet::Take takeDecimal(QString *target) {
    return [target](const QString &text) {
        const QString reason = decimalFault(text);
        *target = reason.isEmpty() ? text : QString();
        return reason.isEmpty() ? QStringList() : QStringList{valueAndReason(text, reason)};
    };
}

}  // namespace

void addFormatOptions(OptionSet *options, Options *settings) {
    FormatTexts &texts = settings->formatTexts;
    options->addChoice<QString>(
        "as", {{"dec", "dec"}, {"signed", "signed"}, {"hex", "hex"}, {"binary", "binary"}, {"float", "float"}},
        &texts.format, "How values are shown and given. float is for 32-bit values; bits are always 0 and 1.");
    options->add("scale", "X",
                 "What a raw value is multiplied by, with --as dec or signed, such as 0.1. Values that no "
                 "raw value gives exactly are refused.",
                 takeDecimal(&texts.scale));
    options->add("offset", "X", "What is added then, such as -40.", takeDecimal(&texts.offset));
}

QStringList settleFormat(Options *settings) {
    QStringList faults;
    for (const dravo::VariableFault &fault :
         readFormat(settings->formatTexts, kindOfType(settings->variable.elemType), &settings->valueFormat)) {
        const bool isFormat = fault.field == QLatin1String("format");
        faults.append(QStringLiteral("--%1 %2").arg(isFormat ? QStringLiteral("as") : fault.field, fault.reason));
    }
    return faults;
}
