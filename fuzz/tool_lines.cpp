// What the command line says of simulated lines: faults and turnarounds; and lists of numbers, ranges and names.
#include <algorithm>
#include <set>

#include "fuzz/tool_texts.h"
#include "host/commands/list_options.h"
#include "host/simulation/fault_table.h"
#include "host/simulation/option_check.h"

namespace {

QString nameOf(FaultKind kind) {
    for (const simulation::FaultRow &row : simulation::faultTable()) {
        if (row.kind == kind) {
            return QLatin1String(row.name);
        }
    }
    return QString();
}

QString written(const SimulatedLineOptions &options) {
    QStringList items;
    for (const LineFault &fault : options.faults) {
        items.append(nameOf(fault.kind) + QLatin1Char('=') + QString::number(fault.probability, 'g', 17));
    }
    for (const ForbiddenRange &range : options.forbidden) {
        items.append(QStringLiteral("refuse=%1:%2-%3").arg(range.station).arg(range.first).arg(range.last));
    }
    if (options.deadStation != 0) {
        items.append(QStringLiteral("dead=%1").arg(options.deadStation));
    }
    if (options.echo) {
        items.append(QStringLiteral("echo"));
    }
    items.append(QStringLiteral("delay=%1").arg(options.delay.count()));
    items.append(QStringLiteral("seed=%1").arg(options.seed));
    return items.join(QLatin1Char(','));
}

bool sameTurnaround(const Turnaround &a, const Turnaround &b) {
    return a.ms == b.ms && a.jitterMs == b.jitterMs;
}

QString written(const Turnaround &turnaround) {
    return QStringLiteral("%1~%2").arg(turnaround.ms).arg(turnaround.jitterMs);
}

/// That the simulation takes what was read, of stations that are there.
void expectUsable(SimulatedLineOptions options) {
    for (int station = 1; station <= 247; ++station) {
        options.stations.push_back(station);
    }
    expect(!simulation::checkOptions(options), "what the command line takes the simulated line refuses");
}

void readAsList(const OptionSet::Take &take, const std::vector<int> &taken, const QString &text) {
    const QStringList faults = take(text);
    expectWords(faults);
    if (!faults.isEmpty()) {
        return;
    }
    expect(!taken.empty() && std::set<int>(taken.begin(), taken.end()).size() == taken.size(),
           "a list is empty, or names something twice");
    QStringList items;
    for (const int item : taken) {
        items.append(QString::number(item));
    }
    const std::vector<int> before = taken;  // NOLINT(performance-unnecessary-copy-initialization): take() changes taken
    expect(take(items.join(QLatin1Char(','))).isEmpty() && taken == before, "a list reads otherwise written back");
}

}  // namespace

void readAsFaults(const QByteArray &text) {
    SimulatedLineOptions options;
    const QStringList complaints = parseFaults(QString::fromUtf8(text), &options);
    expectWords(complaints);
    const QString again = written(options);
    if (!complaints.isEmpty()) {
        expect(again == written(SimulatedLineOptions()), "bad faults leave something behind");
        return;
    }
    expectUsable(options);
    SimulatedLineOptions reread;
    expect(parseFaults(again, &reread).isEmpty() && written(reread) == again, "faults read otherwise written back");
}

void readAsTurnarounds(const QByteArray &text) {
    SimulatedLineOptions options;
    const QStringList complaints = parseTurnarounds(QString::fromUtf8(text), &options);
    expectWords(complaints);
    if (!complaints.isEmpty()) {
        expect(options.turnaroundOf.empty() && sameTurnaround(options.turnaround, Turnaround()),
               "bad turnarounds leave something behind");
        return;
    }
    expectUsable(options);
    QStringList items{written(options.turnaround)};
    for (const auto &[station, turnaround] : options.turnaroundOf) {
        items.append(QString::number(station) + QLatin1Char(':') + written(turnaround));
    }
    SimulatedLineOptions reread;
    expect(parseTurnarounds(items.join(QLatin1Char(',')), &reread).isEmpty() &&
               sameTurnaround(reread.turnaround, options.turnaround) &&
               std::equal(reread.turnaroundOf.begin(), reread.turnaroundOf.end(), options.turnaroundOf.begin(),
                          options.turnaroundOf.end(),
                          [](const auto &a, const auto &b) {
                              return a.first == b.first && sameTurnaround(a.second, b.second);
                          }),
           "turnarounds read otherwise written back");
}

void readAsLists(const QByteArray &bytes) {
    const QString text = QString::fromUtf8(bytes);
    std::vector<int> taken;
    readAsList(takeRanges({1, 247}, &taken), taken, text);
    readAsList(takeRanges({-5, 5}, &taken), taken, text);
    readAsList(takeNumbers({-2000000000, 2000000000}, 4, &taken), taken, text);
    std::vector<int> places;
    const QStringList names{QStringLiteral("none"), QStringLiteral("even"), QStringLiteral("odd")};
    const QStringList faults = takeNames(names, [&places](const std::vector<int> &got) { places = got; })(text);
    expectWords(faults);
    expect(faults.isEmpty() == !places.empty(), "names are neither taken nor refused");
}
