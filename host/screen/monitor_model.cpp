#include "host/screen/monitor_model.h"

#include "host/tags/value_text.h"

namespace {

constexpr qint64 kSecondUs = 1000000;
constexpr qint64 kLongestWaitUs = 3600 * kSecondUs;  // far above the engine's longest
constexpr qint64 kMostSeconds = 600;                 // then in minutes

QString timeWords(qint64 seconds) {
    return seconds > kMostSeconds ? QStringLiteral("%1 min").arg(seconds / 60) : QStringLiteral("%1 s").arg(seconds);
}

}  // namespace

void MonitorModel::take(const dravo::LineEvent &event, qint64 nowUs) {
    news_.take(event, nowUs);
    load_.take(nowUs, line_.statistics().line().counts.busyUs);
    if (event.kind == dravo::LineEvent::PassDone) {
        passes_.passDone(double(event.passUs) / 1000);
    }
}

int MonitorModel::linePerMille(qint64 nowUs) const {
    return load_.perMille(nowUs, line_.statistics().line().counts.busyUs);
}

QVector<int> MonitorModel::stationsDown() const {
    QVector<int> down;
    for (const Tag &variable : variables_) {
        if (line_.isDown(variable.station) && !down.contains(variable.station)) {
            down.append(variable.station);
        }
    }
    return down;
}

void MonitorModel::setLost(bool lost) {
    lost_ = lost;
    everLost_ = everLost_ || lost;
}

bool MonitorModel::anyFailed() const {
    bool any = everLost_;
    for (const qint64 failures : line_.statistics().line().counts.failures) {
        any = any || failures > 0;
    }
    return any;
}

ShownVariable MonitorModel::shown(const Tag &variable, qint64 nowUs) const {
    ShownVariable shown;
    shown.variable = variable;
    shown.state = line_.stateOf(variable, nowUs);
    if (lost_ && shown.state.condition == dravo::Fresh) {
        shown.state.condition = dravo::Stale;
    }
    const QByteArray bytes = dravo::Line::values(variable);
    const QStringList texts = valueTexts(variable.kind, variable.format, bytes, variable.count);
    for (int i = 0; i < variable.count; ++i) {
        const bool read = shown.state.valuesRead.at(i);
        shown.values.append(read ? QJsonValue(qint64(valueAt(variable.kind, bytes, i))) : QJsonValue());
        shown.texts.append(read ? QJsonValue(texts.at(i)) : QJsonValue());
    }
    shown.unit = variable.format.unit;
    shown.meaning = meaningOf(shown.state, variable, nowUs);
    return shown;
}

QString MonitorModel::meaningOf(const dravo::ValueState &state, const dravo::Variable &variable, qint64 nowUs) const {
    if (state.condition == dravo::Down) {
        const qint64 waitUs = line_.nextProbeUs(variable.station) - nowUs;
        const QString next = waitUs > 0 && waitUs < kLongestWaitUs
                                 ? QStringLiteral("next try in ") + timeWords((waitUs - 1) / kSecondUs + 1)
                                 : QStringLiteral("trying now");
        return QStringLiteral("no reply for %1, %2")
            .arg(timeWords(news_.quietUs(variable.station, nowUs) / kSecondUs), next);
    }
    return state.code == 0
               ? QString()
               : news_.sharedRequest(variable, state) + dravo::describeResult(state.code, state.exceptionCode);
}
