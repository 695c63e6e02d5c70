#include "host/screen/monitor_model.h"

#include "host/tags/driver_values.h"
#include "host/tags/result_text.h"
#include "host/tags/value_text.h"

namespace {

// A value read in every one of the last passes is never stale, and a slow pass alone makes none stale.
constexpr int kStalePasses = 3;
constexpr qint64 kLeastStaleMs = 3000;

}  // namespace

QStringList MonitorModel::statisticsLines() const {
    return {passes_.line(), requests_.line(),
            QStringLiteral("bytes out %1   bytes in %2").arg(bytesOut_).arg(bytesIn_)};
}

ShownVariable MonitorModel::shown(const Variable &variable, qint64 nowMs) const {
    const qint64 staleAfterMs = qMax(kLeastStaleMs, qint64(kStalePasses * passes_.medianMs()));
    ShownVariable shown;
    shown.variable = variable;
    shown.state = states_.stateOf(variable, nowMs, staleAfterMs);
    const QByteArray bytes = lastKnownValues(variable);
    for (int i = 0; i < variable.count; ++i) {
        shown.values.append(shown.state.valuesRead.at(i) ? QJsonValue(qint64(valueAt(variable.kind, bytes, i)))
                                                         : QJsonValue(QJsonValue::Null));
    }
    if (shown.state.condition == Condition::Failing) {
        shown.meaning = describeResult(shown.state.code, shown.state.exceptionCode);
    }
    return shown;
}
