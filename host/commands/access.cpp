#include "host/commands/access.h"

#include "host/commands/exit_status.h"
#include "host/commands/line_options.h"
#include "host/pump/stop_signal.h"
#include "host/screen/printable.h"
#include "host/tags/driver_values.h"
#include "host/tags/result_text.h"
#include "host/tags/value_text.h"
#include "korvel_dravo_elements.h"

namespace {

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
    return QStringLiteral("Element type, %1 to %2; %3 hold 32-bit values.")
        .arg(kTypes.lowest)
        .arg(kTypes.highest)
        .arg(typesWith([](const dravo::ElementType &type) {
            return type.elementClass == dravo::WordPairClass || type.elementClass == dravo::DoubleWordClass;
        }));
}

QString addressHelp() {
    return QStringLiteral("Octal for types %1, word.bit for %2, else decimal.")
        .arg(typesWith([](const dravo::ElementType &type) { return type.textBase == 8; }),
             typesWith([](const dravo::ElementType &type) { return type.elementClass == dravo::BitInWordClass; }));
}

bool notStopped() {
    return !stopRequested();
}

QString nameOf(const Variable &variable) {
    return QStringLiteral("station %1 type %2 address %3")
        .arg(variable.station)
        .arg(variable.elemType)
        .arg(printable(variable.addressText));
}

}  // namespace

void addVariableArguments(OptionSet *options, Options *settings) {
    Variable &variable = settings->variable;
    options->addArgument("TYPE", typeHelp(), takeNumber(kTypes, [&variable](int type) { variable.elemType = type; }));
    options->addArgument("ADDRESS", addressHelp(), [&variable](const QString &text) {
        variable.addressText = text;
        return QStringList();
    });
}

void addAccessOptions(OptionSet *options, Options *settings) {
    options->addNumber("station", "S", kStation, &settings->variable.station, "Station of the controller.");
    addLineOptions(options, settings);
    addSimulationOptions(options, settings);
}

QStringList resolveVariable(Options *settings) {
    QStringList faults;
    for (const VariableFault &fault : resolve(&settings->variable)) {
        faults.append(fault.field + QStringLiteral(": ") + fault.reason);
    }
    return faults;
}

int Access::open() {
    if (Failure failure = line_.open(options_, {options_.variable.station})) {
        return fail(kExitPort, failure);
    }
    session_.emplace(options_.driver, line_.link);
    return kExitDone;
}

int Access::write(const QByteArray &values) {
    const Variable &variable = options_.variable;
    if (Failure failure = complete(session_->write(variable, values))) {
        return fail(kExitFailed, Failure(QStringLiteral("write %1: %2").arg(nameOf(variable), failure.text())));
    }
    return report(QStringLiteral("written   "), values);
}

int Access::read(const QString &prefix) {
    const Variable &variable = options_.variable;
    if (Failure failure = complete(session_->readOnce(variable))) {
        return fail(kExitFailed, Failure(QStringLiteral("read %1: %2").arg(nameOf(variable), failure.text())));
    }
    return report(prefix, lastKnownValues(variable));
}

int Access::report(const QString &what, const QByteArray &values) const {
    const Variable &variable = options_.variable;
    const QString texts = valueTexts(variable.kind, values, variable.count).join(QLatin1Char(' '));
    return print(QStringLiteral("%1: %2%3\n").arg(nameOf(variable), what, texts));
}

// Runs the call loop until the operation is over.
Failure Access::complete(int operation) {
    using State = DriverSession::OperationState;
    Failure failure(QStringLiteral("the driver refused it"));
    int idleInARow = 0;
    while (session_->outcome(operation) == State::Pending) {
        const Exchange exchange = session_->step(&notStopped);
        switch (exchange.status) {
            case Exchange::Status::Idle:
                // Once is no more than the pause after five operations of a kind in a row.
                if (++idleInARow > 1) {
                    return Failure(QStringLiteral("the driver dropped it"));
                }
                break;
            case Exchange::Status::Interrupted:
                return Failure(QStringLiteral("interrupted"));
            case Exchange::Status::LineLost:
                return line_.link.loss();
            case Exchange::Status::Judged:
                idleInARow = 0;
                failure = Failure(QStringLiteral("%1 (code %2)")
                                      .arg(describeResult(exchange.code, exchange.exceptionCode))
                                      .arg(exchange.code));
        }
    }
    return session_->outcome(operation) == State::Done ? Failure() : failure;
}
