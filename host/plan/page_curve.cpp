#include <algorithm>
#include <cmath>

#include "host/plan/page_scale.h"
#include "host/plan/page_sections.h"
#include "host/plan/plan_columns.h"

namespace {

constexpr double kLeft = 64;
constexpr double kRight = 110;
constexpr double kTop = 16;
constexpr double kHeight = 340;
constexpr double kMargin = 0.1;    // no curve lies on an edge
constexpr double kLineNeeds = 13;  // between two labels
constexpr int kLimitTicks[] = {1, 16, 32, 48, 64, 80, 96, 112, 125};

class CurveChart {
public:
    CurveChart(const PassPlan &plan, PageWriter *page) : plan_(plan), page_(page) {
        double lowest = double(plan_.curves.last().us.first());
        double highest = lowest;
        for (const LimitCurve &curve : plan_.curves) {
            const auto ends = std::minmax_element(curve.us.begin(), curve.us.end());
            lowest = std::min(lowest, double(*ends.first));
            highest = std::max(highest, double(*ends.second));
        }
        ticksMs_ = logarithmicTicks(lowest / 1000 * (1 - kMargin), highest / 1000 * (1 + kMargin));
    }

    void write() {
        page_->startDrawing(kDrawingWidth, kTop + kHeight + 44, QStringLiteral("Pass time against frame limit"));
        writeAxes();
        for (const LimitCurve &curve : plan_.curves) {
            writeCurve(curve);
        }
        writeNames();
        writePoints();
        page_->end();
        page_->end();
    }

private:
    static double x(int limit) {
        return kLeft + (kDrawingWidth - kLeft - kRight) * (limit - 1) / double(kMostFrameLimit - 1);
    }
    double y(double us) const {
        const double whole = std::log(ticksMs_.last() / ticksMs_.first());
        return kTop + kHeight * (1 - std::log(us / 1000 / ticksMs_.first()) / whole);
    }
    bool isOwn(const LimitCurve &curve) const { return curve.baud == plan_.line.baud; }

    void writeAxes() {
        for (const double ms : ticksMs_) {
            page_->line(kLeft, y(ms * 1000), kDrawingWidth - kRight, y(ms * 1000));
            page_->label(kLeft - 10, y(ms * 1000) + 4, "right", axisTime(ms));
        }
        for (const int limit : kLimitTicks) {
            page_->label(x(limit), kTop + kHeight + 20, "middle", QString::number(limit));
        }
        page_->label(x(63), kTop + kHeight + 40, "middle", QStringLiteral("frame limit"));
    }

    void writeCurve(const LimitCurve &curve) {
        QString points;
        for (int i = 0; i < curve.us.size(); ++i) {
            points += QStringLiteral("%1,%2 ").arg(pixels(x(curve.limitAt(i))), pixels(y(double(curve.us.at(i)))));
        }
        page_->start("polyline", {{"points", points.trimmed()},
                                  {"class", isOwn(curve) ? QStringLiteral("curve own") : QStringLiteral("curve")}});
        page_->element("title", {}, QStringLiteral("%1 baud").arg(curve.baud));
        page_->end();
    }

    // Each at the end of its curve, from the highest down, no two on top of each other.
    void writeNames() {
        QVector<LimitCurve> curves = plan_.curves;
        std::sort(curves.begin(), curves.end(),
                  [](const LimitCurve &a, const LimitCurve &b) { return a.us.last() > b.us.last(); });
        double free = 0;
        for (const LimitCurve &curve : curves) {
            const double place = std::max(free, y(double(curve.us.last())) + 4);
            page_->label(kDrawingWidth - kRight + 12, place, isOwn(curve) ? "strong" : "",
                         QStringLiteral("%1 baud").arg(curve.baud));
            free = place + kLineNeeds;
        }
    }

    void writePoint(const OtherPass &pass, const char *style, double radius, const QString &name, double away) {
        const double pointX = x(pass.frameLimit);
        const double pointY = y(double(pass.figures.us));
        const QString text =
            QStringLiteral("%1: limit %2, %3").arg(name).arg(pass.frameLimit).arg(timeText(pass.figures.us));
        page_->empty(
            "circle",
            {{"cx", pixels(pointX)}, {"cy", pixels(pointY)}, {"r", pixels(radius)}, {"class", QLatin1String(style)}});
        const bool isLate = pass.frameLimit > 90;  // then the text stands to the left
        page_->label(pointX + (isLate ? 4 : -4), pointY + away, isLate ? "strong halo right" : "strong halo", text);
    }

    void writePoints() {
        if (plan_.bestLimit.figures.us < plan_.itself.figures.us) {
            writePoint(plan_.bestLimit, "best", 5, QStringLiteral("shortest"), 22);
        }
        writePoint(plan_.itself, "chosen", 5.5, QStringLiteral("this plan"), -14);
    }

    const PassPlan &plan_;
    PageWriter *page_;
    QVector<double> ticksMs_;
};

}  // namespace

void writeCurves(const PassPlan &plan, PageWriter *page) {
    page->element("h2", {}, QStringLiteral("Pass time against frame limit"));
    page->element("p", {},
                  QStringLiteral("How long a pass takes with --frame-limit from 1 to %1 and --merge %2, for each baud "
                                 "rate. The scale of time is logarithmic.")
                      .arg(kMostFrameLimit)
                      .arg(mergeName(plan.line.merge)));
    CurveChart(plan, page).write();
}
