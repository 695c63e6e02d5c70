// The text form of the faults: what an operator types on the command line.
#include <QtCore/QStringList>
#include <algorithm>

#include "host/simulation/fault_table.h"

using namespace simulation;

namespace {

const char kSeed[] = "seed";

const FaultRow *findFault(const QString &name) {
    const std::vector<FaultRow> &faults = faultTable();
    const auto found = std::find_if(faults.begin(), faults.end(),
                                    [&name](const FaultRow &fault) { return name == QLatin1String(fault.name); });
    return found != faults.end() ? &*found : nullptr;
}

/// Takes one item's value into options. @return what is wrong with it; empty: nothing.
QString takeItem(const QString &name, const QString &value, SimulatedLineOptions *options) {
    bool ok = false;
    if (name == QLatin1String(kSeed)) {
        options->seed = value.toUInt(&ok);
        return ok ? QString() : QStringLiteral("'%1' is not a seed from 0 to 4294967295").arg(value);
    }
    const FaultRow *fault = findFault(name);
    if (fault == nullptr) {
        return QStringLiteral("there is no such fault");
    }
    if (fault->stage == FaultStage::Setting) {
        options->deadStation = value.toInt(&ok);
        return ok && options->deadStation >= 1 && options->deadStation <= 247
                   ? QString()
                   : QStringLiteral("'%1' is not a station from 1 to 247").arg(value);
    }
    const double probability = value.toDouble(&ok);
    if (!ok || !(probability >= 0.0 && probability <= 1.0)) {
        return QStringLiteral("'%1' is not a probability from 0 to 1").arg(value);
    }
    options->faults.push_back({fault->kind, probability});
    return QString();
}

}  // namespace

Failure parseFaults(const QString &text, SimulatedLineOptions *options) {
    SimulatedLineOptions parsed = *options;
    parsed.faults.clear();
    QStringList seen;
    QStringList complaints;
    const QStringList items = text.trimmed().isEmpty() ? QStringList() : text.split(QLatin1Char(','));
    for (const QString &item : items) {
        const int equals = item.indexOf(QLatin1Char('='));
        const QString name = item.left(equals).trimmed();
        QString complaint;
        if (equals < 0) {
            complaint = QStringLiteral("it must read name=value");
        } else if (seen.contains(name)) {
            complaint = QStringLiteral("it is named twice");
        } else {
            complaint = takeItem(name, item.mid(equals + 1).trimmed(), &parsed);
        }
        if (!complaint.isEmpty()) {
            complaints << QStringLiteral("fault '%1': %2").arg(item.trimmed(), complaint);
        }
        seen << name;
    }
    if (complaints.isEmpty()) {
        *options = parsed;
    }
    return Failure(complaints.join(QStringLiteral("; ")).toStdString());
}

QString faultListHelp() {
    QString help;
    const auto addLine = [&help](const char *name, const char *value, const char *meaning) {
        help += QStringLiteral("%1=%2").arg(QLatin1String(name), QLatin1String(value)).leftJustified(15) +
                QLatin1Char(' ') + QLatin1String(meaning) + QLatin1Char('\n');
    };
    for (const FaultRow &fault : faultTable()) {
        addLine(fault.name, fault.value, fault.help);
    }
    addLine(kSeed, "N", "another course of faults (1)");
    return help;
}
