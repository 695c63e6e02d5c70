// read and write: one operation through the driver's queues, with its values and its outcome.
#include "host/commands.h"
#include "host/open_line.h"
#include "host/record_output.h"
#include "host/result_text.h"
#include "host/stop_signal.h"
#include "host/value_text.h"

namespace {

bool notStopped() {
    return !stopRequested();
}

/// Runs the call loop until the operation is over. @return empty when it went well, else the reason in words.
QString complete(DriverSession &session, const SerialLink &link, int operation) {
    using State = DriverSession::OperationState;
    QString reason = QStringLiteral("the driver refused it");
    int idleInARow = 0;
    while (session.outcome(operation) == State::Pending) {
        const Exchange exchange = session.step(&notStopped);
        switch (exchange.status) {
            case Exchange::Status::Idle:
                // Once is no more than the pause after five operations of a kind in a row.
                if (++idleInARow > 1) {
                    return QStringLiteral("the driver dropped it");
                }
                break;
            case Exchange::Status::Interrupted:
                return QStringLiteral("interrupted");
            case Exchange::Status::LineLost:
                return QStringLiteral("the line is lost: ") + link.lossReason();
            case Exchange::Status::Judged:
                idleInARow = 0;
                reason = QStringLiteral("%1 (code %2)")
                             .arg(describeResult(exchange.code, exchange.exceptionCode))
                             .arg(exchange.code);
        }
    }
    return session.outcome(operation) == State::Done ? QString() : reason;
}

QString valuesText(const Variable &variable, const QByteArray &bytes) {
    QStringList texts;
    for (int i = 0; i < variable.count; ++i) {
        texts.append(QString::number(valueAt(valueKind(variable.elemType), bytes, i)));
    }
    return texts.join(QLatin1Char(' '));
}

QString nameOf(const Variable &variable) {
    return QStringLiteral("station %1 type %2 address %3")
        .arg(variable.station)
        .arg(variable.elemType)
        .arg(printable(variable.addressText));
}

int runAccess(const Options &options, const QByteArray &written) {
    const Variable &variable = options.variable;
    OpenLine line;
    const QString refused = line.open(options, {variable.station});
    if (!refused.isEmpty()) {
        return fail(kExitPort, refused);
    }
    DriverSession session(options.driver, line.link);
    const bool write = !written.isEmpty();
    if (write) {
        const QString reason = complete(session, line.link, session.write(variable, written));
        if (!reason.isEmpty()) {
            return fail(kExitFailed, QStringLiteral("write %1: %2").arg(nameOf(variable), reason));
        }
        if (!writeOut(
                QStringLiteral("%1: written   %2\n").arg(nameOf(variable), valuesText(variable, written)).toUtf8())) {
            return kExitFailed;
        }
    }
    const QString reason = complete(session, line.link, session.readOnce(variable));
    if (!reason.isEmpty()) {
        return fail(kExitFailed, QStringLiteral("read %1: %2").arg(nameOf(variable), reason));
    }
    const QString values = valuesText(variable, DriverSession::values(variable));
    const bool shown = writeOut(QStringLiteral("%1: %2%3\n")
                                    .arg(nameOf(variable), write ? QStringLiteral("read back ") : QString(), values)
                                    .toUtf8());
    return shown ? kExitDone : kExitFailed;
}

}  // namespace

int runRead(const Options &options) {
    return runAccess(options, QByteArray());
}

int runWrite(const Options &options) {
    QStringList faults;  // none: the command line was checked
    return runAccess(options, valueBytes(valueKind(options.variable.elemType), options.values, &faults));
}
