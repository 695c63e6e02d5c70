// The text form of the turnarounds: "[STATION:]MS[~MORE]", separated by commas.
#include <QtCore/QRegularExpression>
#include <optional>

#include "host/simulation/simulated_line.h"

namespace {

struct Item {
    int station;  // 0: of every station that has none of its own
    Turnaround turnaround;
};

/// Empty: it is none.
std::optional<Item> itemOf(const QString &text) {
    static const QRegularExpression form(QStringLiteral("^(?:(\\d+):)?(\\d+)(?:~(\\d+))?$"));
    const QRegularExpressionMatch match = form.match(text);
    bool good = match.hasMatch();
    const auto number = [&](int group, int lowest, int highest) {
        const QString digits = match.captured(group);
        bool ok = true;
        const int value = digits.isEmpty() ? 0 : digits.toInt(&ok);
        good = good && ok && (digits.isEmpty() || (value >= lowest && value <= highest));
        return value;
    };
    const Item item{number(1, 1, 247), {number(2, 0, kLongestTurnaroundMs), number(3, 0, kLongestTurnaroundMs)}};
    return good ? std::optional<Item>(item) : std::nullopt;
}

}  // namespace

QStringList parseTurnarounds(const QString &text, SimulatedLineOptions *options) {
    std::map<int, Turnaround> given;
    QStringList complaints;
    for (const QString &part : text.split(QLatin1Char(','))) {
        const std::optional<Item> item = itemOf(part.trimmed());
        if (!item) {
            complaints << QStringLiteral(
                              "'%1': give MS, MS~MORE or STATION:MS, a station from 1 to 247 and times from "
                              "0 to %2 ms")
                              .arg(part.trimmed())
                              .arg(kLongestTurnaroundMs);
        } else if (!given.insert({item->station, item->turnaround}).second) {
            complaints << QStringLiteral("'%1': there is another one for that").arg(part.trimmed());
        }
    }
    if (complaints.isEmpty()) {
        options->turnaround = given.count(0) != 0 ? given[0] : Turnaround();
        given.erase(0);
        options->turnaroundOf = given;
    }
    return complaints;
}
