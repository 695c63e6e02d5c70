#include "host/monitor_model.h"

#include "host/result_text.h"
#include "host/value_text.h"

namespace {

// A value read in every one of the last passes is never stale, and a slow pass alone makes none stale.
constexpr int kStalePasses = 3;
constexpr qint64 kLeastStaleMs = 3000;

}  // namespace

MonitorModel::MonitorModel(const QVector<Variable> &variables, int requestsPerPass, const SerialLink &link)
    : variables_(variables), link_(link), statistics_(requestsPerPass) {
    clock_.start();
}

void MonitorModel::judged(const Exchange &exchange) {
    statistics_.judged(exchange);
    if (exchange.cyclic) {
        states_.finished(exchange.range, exchange.code, exchange.exceptionCode, nowMs());
    }
}

ValueLine MonitorModel::valueLine(const Variable &variable) const {
    const qint64 staleAfterMs = qMax(kLeastStaleMs, qint64(kStalePasses * statistics_.medianMs()));
    ValueLine line;
    line.state = states_.stateOf(variable, nowMs(), staleAfterMs);
    const ValueKind kind = valueKind(variable.elemType);
    const QByteArray bytes = DriverSession::values(variable);
    const QVector<bool> read = states_.valuesRead(variable);
    for (int i = 0; i < variable.count; ++i) {
        line.values.append(read.at(i) ? QString::number(valueAt(kind, bytes, i)) : QStringLiteral("-"));
    }
    if (line.state.condition == ValueState::Condition::Failing) {
        line.meaning = describeResult(line.state.code, line.state.exceptionCode);
    }
    return line;
}

QString printable(const QString &text) {
    QString line = text;
    for (QChar &character : line) {
        if (character.category() == QChar::Other_Control) {
            character = QLatin1Char(' ');
        }
    }
    return line;
}
