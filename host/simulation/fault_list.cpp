// The text form of the faults: what an operator types on the command line.
#include <algorithm>

#include "host/simulation/fault_settings.h"
#include "host/simulation/fault_table.h"

using namespace simulation;

namespace {

template <typename Row>
const Row *find(const std::vector<Row> &rows, const QString &name) {
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&name](const Row &row) { return name == QLatin1String(row.name); });
    return found != rows.end() ? &*found : nullptr;
}

QString takeProbability(FaultKind kind, const QString &value, SimulatedLineOptions *options) {
    bool ok = false;
    const double probability = value.toDouble(&ok);
    if (!ok || !(probability >= 0.0 && probability <= 1.0)) {
        return QStringLiteral("'%1' is not a probability from 0 to 1").arg(value);
    }
    options->faults.push_back({kind, probability});
    return QString();
}

QStringList knownNames() {
    QStringList names;
    for (const FaultRow &fault : faultTable()) {
        names << QLatin1String(fault.name);
    }
    for (const FaultSetting &setting : faultSettings()) {
        names << QLatin1String(setting.name);
    }
    return names;
}

/// Takes one item into options. @return what is wrong with it; empty: nothing.
QString takeItem(const QString &name, const QString &value, bool hasValue, SimulatedLineOptions *options) {
    const FaultRow *fault = find(faultTable(), name);
    const FaultSetting *setting = find(faultSettings(), name);
    if (fault == nullptr && setting == nullptr) {
        return QStringLiteral("there is no such fault; there are %1").arg(knownNames().join(QStringLiteral(", ")));
    }
    const bool wantsValue = fault != nullptr || *setting->value != '\0';
    if (wantsValue != hasValue) {
        return wantsValue ? QStringLiteral("it must read name=value") : QStringLiteral("it takes no value");
    }
    return fault != nullptr ? takeProbability(fault->kind, value, options) : setting->take(value, options);
}

}  // namespace

QStringList parseFaults(const QString &text, SimulatedLineOptions *options) {
    SimulatedLineOptions parsed = *options;
    parsed.faults.clear();
    parsed.forbidden.clear();
    QStringList seen;
    QStringList complaints;
    const QStringList items = text.trimmed().isEmpty() ? QStringList() : text.split(QLatin1Char(','));
    for (const QString &item : items) {
        const QString name = item.section(QLatin1Char('='), 0, 0).trimmed();
        const FaultSetting *setting = find(faultSettings(), name);
        const bool again = seen.contains(name) && !(setting != nullptr && setting->repeats);
        const QString value = item.section(QLatin1Char('='), 1).trimmed();
        const QString complaint = again ? QStringLiteral("it is named twice")
                                        : takeItem(name, value, item.contains(QLatin1Char('=')), &parsed);
        if (!complaint.isEmpty()) {
            complaints << QStringLiteral("fault '%1': %2").arg(item.trimmed(), complaint);
        }
        seen << name;
    }
    if (complaints.isEmpty()) {
        *options = parsed;
    }
    return complaints;
}

QString faultListHelp() {
    QString help;
    const auto addLine = [&help](const QString &item, const char *meaning) {
        help += item.leftJustified(15) + QLatin1Char(' ') + QLatin1String(meaning) + QLatin1Char('\n');
    };
    for (const FaultRow &fault : faultTable()) {
        addLine(QLatin1String(fault.name) + QStringLiteral("=P"), fault.help);
    }
    for (const FaultSetting &setting : faultSettings()) {
        const QString equals = QLatin1String(*setting.value != '\0' ? "=" : "");
        addLine(QLatin1String(setting.name) + equals + QLatin1String(setting.value), setting.help);
    }
    return help;
}
