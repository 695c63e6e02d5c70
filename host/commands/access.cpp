#include "host/commands/access.h"

#include "host/commands/exit_status.h"
#include "host/commands/format_options.h"
#include "host/commands/line_options.h"
#include "host/commands/trace_options.h"
#include "host/pump/pump.h"
#include "host/pump/stop_signal.h"
#include "host/screen/printable.h"
#include "host/tags/value_text.h"
#include "host/tags/variable_faults.h"
#include "korvel_dravo_elements.h"

namespace {

constexpr int kReadsForEcho = 12;  // three in a row have to be answered at the first try
constexpr Bounds kTypes{0, dravo::kElementTypeCount - 1};

/// The types that has holds for: "15, 16, 17 and 20".
template <typename Predicate>
QString typesWith(Predicate has) {
    QStringList types;
    for (int code = 0; code < dravo::kElementTypeCount; ++code) {
        if (has(dravo::kElementTypes[code])) {
            types.append(QString::number(code));
        }
    }
    const QString last = types.takeLast();
    return types.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
}

QString typeHelp() {
    return QStringLiteral("Element type, %1 to %2; %3 hold 32-bit values. All of them: dravo-host help types.")
        .arg(kTypes.lowest)
        .arg(kTypes.highest)
        .arg(typesWith([](const dravo::ElementType &type) {
            return type.elementClass == dravo::WordPairClass || type.elementClass == dravo::DoubleWordClass;
        }));
}

QString addressHelp() {
    return QStringLiteral("Octal for types %1, word.bit with a bit of 0 to 15 for %2, else decimal.")
        .arg(typesWith([](const dravo::ElementType &type) { return type.textBase == 8; }),
             typesWith([](const dravo::ElementType &type) { return type.elementClass == dravo::BitInWordClass; }));
}

QString nameOf(const dravo::Variable &variable) {
    return QStringLiteral("station %1 type %2 address %3")
        .arg(variable.station)
        .arg(variable.elemType)
        .arg(printable(variable.addressText));
}

}  // namespace

void addVariableArguments(OptionSet *options, Options *settings) {
    dravo::Variable &variable = settings->variable;
    options->addArgument("TYPE", typeHelp(), takeNumber(kTypes, [&variable](int type) { variable.elemType = type; }));
    options->addArgument("ADDRESS", addressHelp(), [&variable](const QString &text) {
        variable.addressText = text;
        return QStringList();
    });
}

void addAccessOptions(OptionSet *options, Options *settings) {
    options->addNumber("station", "S", kStation, &settings->variable.station, "Station of the controller.");
    addFormatOptions(options, settings);
    addLineOptions(options, settings);
    addSimulationOptions(options, settings);
    addPacingOptions(options, settings);
    addOwnLineSpeed(options, &settings->port);
    addTraceOptions(options, settings);
    options->addCheck([settings] { return strangerFaults(*settings, {settings->variable.station}); });
}

QStringList resolveVariable(Options *settings) {
    QStringList faults;
    for (const dravo::VariableFault &fault : resolveWritten(&settings->variable)) {
        faults.append(fault.field + QStringLiteral(": ") + fault.reason);
    }
    return faults + settleFormat(settings);
}

int Access::open() {
    if (Failure failure = line_.open(options_, {options_.variable.station})) {
        return fail(kExitPort, failure);
    }
    engine_.emplace(lineSettings(options_), nowUs());
    return kExitDone;
}

void Access::learnWhetherEchoes() {
    dravo::Variable one = options_.variable;
    one.count = 1;
    dravo::resolve(&one);  // fewer values of a usable variable are usable
    dravo::LineEvent end;
    for (int i = 0; i < kReadsForEcho && options_.line.echo == dravo::EchoAuto && !engine_->knowsEcho(); ++i) {
        if (complete(engine_->readOnce(one), &end) || end.failure == dravo::LineEvent::NoAnswer) {
            return;
        }
    }
}

int Access::write(const QByteArray &values) {
    const dravo::Variable &variable = options_.variable;
    bool refused = false;
    if (Failure failure = outcome(engine_->write(variable, values), &refused)) {
        const QString doubt = !refused              ? QStringLiteral("; it may have been carried out")
                              : variable.count == 1 ? QString()
                                                    : QStringLiteral("; other parts may have been carried out");
        return fail(kExitFailed,
                    Failure(QStringLiteral("write %1: %2%3").arg(nameOf(variable), failure.text(), doubt)));
    }
    return report(QStringLiteral("written   "), values);
}

int Access::read(const QString &prefix) {
    const dravo::Variable &variable = options_.variable;
    if (Failure failure = outcome(engine_->readOnce(variable))) {
        return fail(kExitFailed, Failure(QStringLiteral("read %1: %2").arg(nameOf(variable), failure.text())));
    }
    return report(prefix, dravo::Line::values(variable));
}

int Access::report(const QString &what, const QByteArray &values) const {
    const dravo::Variable &variable = options_.variable;
    const QString texts =
        valueTexts(variable.kind, options_.valueFormat, values, variable.count).join(QLatin1Char(' '));
    return print(QStringLiteral("%1: %2%3\n").arg(nameOf(variable), what, texts));
}

Failure Access::complete(int operation, dravo::LineEvent *end) {
    if (operation == 0) {
        return Failure(QStringLiteral("so many values need more requests than are queued: raise --frame-limit"));
    }
    bool over = false;
    const auto isNotOver = [&](const dravo::LineEvent &event) {
        over = event.kind == dravo::LineEvent::Operation && event.operation == operation;
        *end = event;
        return !over;
    };
    while (!over && !stopRequested()) {
        if (Failure lost = pump(&line_.port(), &*engine_, isNotOver, &line_.trace())) {
            return lost;
        }
    }
    return over ? Failure() : Failure(QStringLiteral("interrupted"));
}

Failure Access::outcome(int operation, bool *refused) {
    dravo::LineEvent end;
    if (Failure failure = complete(operation, &end)) {
        return failure;
    }
    if (refused) {
        *refused = end.failure == dravo::LineEvent::Refused && end.exceptionCode <= 3;
    }
    if (end.failure == dravo::LineEvent::NotSure) {
        return Failure(QStringLiteral(
            "the same came back, and nothing shows whether the adapter echoes: say --echo off, or on if it does"));
    }
    if (end.failure == dravo::LineEvent::NoAnswer && !options_.port.device.isEmpty()) {
        tell(QStringLiteral("wrong baud rate, parity, station or wires? dravo-host scan --port %1 looks for stations")
                 .arg(options_.port.device));
    }
    return end.done ? Failure()
                    : Failure(QStringLiteral("%1 (code %2)")
                                  .arg(dravo::describeResult(end.code, end.exceptionCode))
                                  .arg(end.code));
}
