#include "host/plan/page_sections.h"
#include "host/plan/plan_columns.h"
#include "host/plan/time_shares.h"

namespace {
constexpr double kHeight = 28;
}

void writeShares(const PassPlan &plan, PageWriter *page) {
    const QVector<TimeShare> shares = timeShares(plan);
    double sum = 0;
    for (const TimeShare &share : shares) {
        sum += share.us;
    }
    page->element("h2", {}, QStringLiteral("Where the time goes"));
    page->element("p", {},
                  QStringLiteral("One pass of %1, all of it on the line.").arg(timeText(plan.itself.figures.us)));
    page->startDrawing(kDrawingWidth, kHeight, QStringLiteral("Into what the time of a pass goes"));
    double x = 0;
    QVector<PageWriter::LegendEntry> legend;
    for (const TimeShare &share : shares) {
        const double part = share.us / qMax(1.0, sum);
        page->rect(x, 0, part * kDrawingWidth, kHeight, share.style);
        x += part * kDrawingWidth;
        legend.append(
            {share.style, QString::fromLatin1(share.name), QString::number(100 * part, 'f', 1) + QStringLiteral(" %")});
    }
    page->end();
    page->end();
    page->legend(legend);
}
