#include "host/simulation/fault_settings.h"

#include <QtCore/QRegularExpression>

namespace simulation {

namespace {

constexpr int kHighestAddress = 65535;
constexpr int kLongestDelayMs = 60000;

bool isStation(bool isNumber, int number) {
    return isNumber && number >= 1 && number <= 247;
}

QString takeDead(const QString &value, SimulatedLineOptions *options) {
    bool ok = false;
    options->deadStation = value.toInt(&ok);
    return isStation(ok, options->deadStation) ? QString()
                                               : QStringLiteral("'%1' is not a station from 1 to 247").arg(value);
}

QString takeRange(const QString &value, SimulatedLineOptions *options) {
    static const QRegularExpression form(QStringLiteral("^(\\d+):(\\d+)(?:-(\\d+))?$"));
    const QRegularExpressionMatch match = form.match(value);
    const QString last = match.captured(match.captured(3).isEmpty() ? 2 : 3);
    bool ok[3] = {};
    const ForbiddenRange range{match.captured(1).toInt(&ok[0]), match.captured(2).toInt(&ok[1]), last.toInt(&ok[2])};
    if (!isStation(ok[0], range.station) || !ok[1] || !ok[2] || range.first > range.last ||
        range.last > kHighestAddress) {
        return QStringLiteral(
                   "'%1': give STATION:FIRST-LAST, a station from 1 to 247 and Modbus addresses from 0 to %2")
            .arg(value)
            .arg(kHighestAddress);
    }
    options->forbidden.push_back(range);
    return QString();
}

QString takeDelay(const QString &value, SimulatedLineOptions *options) {
    bool ok = false;
    const int ms = value.toInt(&ok);
    options->delay = std::chrono::milliseconds(ms);
    return ok && ms >= 0 && ms <= kLongestDelayMs
               ? QString()
               : QStringLiteral("'%1' is not a time from 0 to %2 ms").arg(value).arg(kLongestDelayMs);
}

QString takeEcho(const QString & /*value*/, SimulatedLineOptions *options) {
    options->echo = true;
    return QString();
}

QString takeSeed(const QString &value, SimulatedLineOptions *options) {
    bool ok = false;
    options->seed = value.toUInt(&ok);
    return ok ? QString() : QStringLiteral("'%1' is not a seed from 0 to 4294967295").arg(value);
}

}  // namespace

const std::vector<FaultSetting> &faultSettings() {
    static const std::vector<FaultSetting> kSettings{
        {"dead", "STATION", "a station that never answers", false, &takeDead},
        {"refuse", "S:A-B", "station S refuses addresses A to B", true, &takeRange},
        {"delay", "MS", "every reply comes so much later", false, &takeDelay},
        {"echo", "", "the adapter returns what is sent", false, &takeEcho},
        {"seed", "N", "another course of faults (1)", false, &takeSeed},
    };
    return kSettings;
}

}  // namespace simulation
