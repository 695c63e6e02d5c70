#include "host/screen/screen_header.h"

#include "host/screen/cell_text.h"

namespace {

constexpr int kLeastName = 8;
const auto kGap = QStringLiteral("  ");

QString figures(const MonitorModel &model, qint64 nowUs) {
    const double ms = model.lastPassMs();
    const QString pass =
        model.passes() == 0 ? QStringLiteral("-") : QStringLiteral("%1 ms").arg(ms, 0, 'f', ms < 100 ? 1 : 0);
    return QStringLiteral("pass %1%2load %3 %").arg(pass, kGap).arg((model.linePerMille(nowUs) + 5) / 10);
}

QString troubles(const MonitorModel &model) {
    if (model.isLost()) {
        return QStringLiteral("DEVICE LOST, opening it again");
    }
    const QVector<int> down = model.stationsDown();
    return down.isEmpty()     ? QString()
           : down.size() == 1 ? QStringLiteral("station %1 down").arg(down.first())
                              : QStringLiteral("%1 stations down").arg(down.size());
}

}  // namespace

ScreenLine headerLine(const MonitorModel &model, const QString &lineName, int row, int width, qint64 nowUs) {
    const QString place = QStringLiteral("%1%2 of %3").arg(kGap).arg(row + 1).arg(model.variables().size());
    const QString trouble = troubles(model);
    const QString busy = kGap + figures(model, nowUs) + (trouble.isEmpty() ? QString() : kGap);
    const int left = width - cellsOf(place);
    const QString name = fittedEnd(lineName, qMax(left - cellsOf(busy) - cellsOf(trouble), qMin(left, kLeastName)));
    ScreenLine line;
    int room = left;
    for (const Span &span : {Span{name, Tone::Strong}, Span{busy, Tone::Plain}, Span{trouble, Tone::Bad}}) {
        const QString text = fitted(span.text, room);
        room -= cellsOf(text);
        line.spans.append({text, span.tone});
    }
    line.spans.append({QString(room, QLatin1Char(' ')) + place, Tone::Plain});
    return line;
}
