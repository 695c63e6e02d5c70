// The text form of the faults: what an operator types on the command line.
#include <QtCore/QStringList>
#include <algorithm>
#include <array>

#include "host/simulation/simulated_line.h"

namespace {

struct FaultName {
    const char *name;
    FaultKind kind;
};

constexpr std::array<FaultName, 7> kFaultNames{{
    {"noreply", FaultKind::NoReply},
    {"late", FaultKind::LateReply},
    {"truncated", FaultKind::Truncated},
    {"flip", FaultKind::FlippedBit},
    {"wrongstation", FaultKind::WrongStation},
    {"stray", FaultKind::StrayByte},
    {"exception", FaultKind::ExceptionReply},
}};

/// Takes one item's value into options. @return what is wrong with it; empty: nothing.
QString takeItem(const QString &name, const QString &value, SimulatedLineOptions &options) {
    bool ok = false;
    if (name == QLatin1String("dead")) {
        options.deadStation = value.toInt(&ok);
        return ok && options.deadStation >= 1 && options.deadStation <= 247
                   ? QString()
                   : QStringLiteral("'%1' is not a station from 1 to 247").arg(value);
    }
    if (name == QLatin1String("seed")) {
        options.seed = value.toUInt(&ok);
        return ok ? QString() : QStringLiteral("'%1' is not a seed from 0 to 4294967295").arg(value);
    }
    const auto fault = std::find_if(kFaultNames.begin(), kFaultNames.end(),
                                    [&name](const FaultName &known) { return name == QLatin1String(known.name); });
    if (fault == kFaultNames.end()) {
        return QStringLiteral("there is no such fault");
    }
    const double probability = value.toDouble(&ok);
    if (!ok || !(probability >= 0.0 && probability <= 1.0)) {
        return QStringLiteral("'%1' is not a probability from 0 to 1").arg(value);
    }
    options.faults.push_back({fault->kind, probability});
    return QString();
}

}  // namespace

bool parseFaults(const QString &text, SimulatedLineOptions &options, QString *error) {
    SimulatedLineOptions parsed = options;
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
            complaint = takeItem(name, item.mid(equals + 1).trimmed(), parsed);
        }
        if (!complaint.isEmpty()) {
            complaints << QStringLiteral("fault '%1': %2").arg(item.trimmed(), complaint);
        }
        seen << name;
    }
    if (!complaints.isEmpty()) {
        if (error != nullptr) {
            *error = complaints.join(QStringLiteral("; "));
        }
        return false;
    }
    options = parsed;
    return true;
}
