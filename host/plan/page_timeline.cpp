#include <QtCore/QMap>

#include "host/plan/page_scale.h"
#include "host/plan/page_sections.h"
#include "host/plan/plan_columns.h"
#include "host/plan/time_shares.h"

namespace {

constexpr double kLeft = 88;
constexpr double kTop = 34;
constexpr double kLane = 46;
constexpr double kBar = 22;
constexpr double kNumberNeeds = 8;  // for each digit, and as much again

QString titleOf(int number, const PlannedRequest &request) {
    return QStringLiteral("request %1, station %2: %3 %4 to %5, %6 ms")
        .arg(number)
        .arg(request.elements.station)
        .arg(request.frame.function == kReadCoils ? QStringLiteral("coils") : QStringLiteral("registers"))
        .arg(request.frame.start)
        .arg(request.frame.start + request.frame.quantity - 1)
        .arg(msText(request.us));
}

class Timeline {
public:
    Timeline(const PassPlan &plan, PageWriter *page)
        : plan_(plan), page_(page), perUs_((kDrawingWidth - kLeft - 12) / double(qMax<qint64>(1, sumUs()))) {
        for (const PlannedRequest &request : plan_.requests) {
            lanes_.insert(request.elements.station, 0);
        }
        int lane = 0;
        for (int &place : lanes_) {
            place = lane++;
        }
    }

    void write() {
        page_->startDrawing(kDrawingWidth, kTop + kLane * lanes_.size(), QStringLiteral("The requests of a pass"));
        writeAxis();
        for (auto lane = lanes_.constBegin(); lane != lanes_.constEnd(); ++lane) {
            page_->label(0, top(lane.key()) + 16, "strong", QStringLiteral("station %1").arg(lane.key()));
        }
        double us = 0;
        int number = 0;
        for (const PlannedRequest &request : plan_.requests) {
            writeRequest(++number, request, kLeft + us * perUs_);
            us += double(request.us);
        }
        page_->end();
        page_->end();
    }

private:
    qint64 sumUs() const { return plan_.itself.figures.us; }
    double top(int station) const { return kTop + kLane * lanes_.value(station); }

    void writeAxis() {
        for (const double ms : linearTicks(double(sumUs()) / 1000, 10)) {
            const double x = kLeft + ms * 1000 * perUs_;
            page_->line(x, kTop - 10, x, kTop + kLane * lanes_.size());
            page_->label(x, kTop - 16, "middle", axisTime(ms));
        }
    }

    void writeRequest(int number, const PlannedRequest &request, double x) {
        page_->start("g");
        page_->element("title", {}, titleOf(number, request));
        const double y = top(request.elements.station);
        const double width = double(request.us) * perUs_;
        double shareX = x;
        for (const TimeShare &share : timeShares(request, RequestCost(plan_.line))) {
            if (share.us > 0) {
                page_->rect(shareX, y, share.us * perUs_, kBar, share.style);
            }
            shareX += share.us * perUs_;
        }
        const QString text = QString::number(number);
        if (width >= kNumberNeeds * (text.size() + 1)) {
            page_->label(x + width / 2, y + kBar + 13, "small middle", text);
        }
        page_->end();
    }

    const PassPlan &plan_;
    PageWriter *page_;
    double perUs_;
    QMap<int, int> lanes_;  // by station
};

}  // namespace

void writeTimeline(const PassPlan &plan, PageWriter *page) {
    page->element("h2", {}, QStringLiteral("The pass, station by station"));
    page->element(
        "p", {},
        QStringLiteral("Each block is one request with its reply, in the colours above. The numbers are those "
                       "of the table below."));
    Timeline(plan, page).write();
}
