#include <QtCore/QMap>
#include <algorithm>

#include "host/plan/page_sections.h"
#include "host/plan/strip_layout.h"

namespace {

constexpr double kLeft = 150;
constexpr double kTop = 8;
constexpr double kBar = 20;
constexpr double kRow = 50;
constexpr double kMostPerRegister = 10;
constexpr double kMostPerCoil = 8;

QString titleOf(const PlannedRequest &request) {
    constexpr int kMostCharacters = 300;
    return QStringLiteral("%1: %2 of %3 elements wanted; %4")
        .arg(addressesText(request))
        .arg(request.wantedCount)
        .arg(request.elements.count)
        .arg(request.failure.isEmpty() ? request.labels.join(QStringLiteral(", ")).left(kMostCharacters)
                                       : request.failure);
}

void writeRequest(const PlannedRequest &request, const StripPlace &at, PageWriter *page) {
    const double x = kLeft + at.x;
    const double y = kTop + kRow * at.row;
    const double perElement = at.width / std::max(1, request.elements.count);
    page->start("g");
    page->element("title", {}, titleOf(request));
    const bool isRead = request.failure.isEmpty();
    page->rect(x, y, at.width, kBar, isRead ? "gap" : "bad");
    for (const ElementRun &run : isRead ? request.wanted : QVector<ElementRun>()) {
        page->rect(x + (run.first - request.elements.address) * perElement, y, run.count * perElement, kBar, "value");
    }
    if (request.cutAtStart) {
        page->rect(x - 1.5, y - 5, 3, kBar + 10, "cut");
    }
    if (request.cutAtEnd) {
        page->rect(x + at.width - 1.5, y - 5, 3, kBar + 10, "cut");
    }
    if (at.hasLabel) {
        page->label(x, y + kBar + 14, "small", addressesText(request));
    }
    page->end();
}

class Strips {
public:
    explicit Strips(const PassPlan &plan) {
        for (const PlannedRequest &request : plan.requests) {
            areas_[{request.elements.station, request.frame.function}].append(&request);
        }
        for (Requests &requests : areas_) {
            std::sort(requests.begin(), requests.end(),
                      [](const PlannedRequest *a, const PlannedRequest *b) { return a->frame.start < b->frame.start; });
        }
    }

    void write(PageWriter *page) const {
        for (auto area = areas_.constBegin(); area != areas_.constEnd(); ++area) {
            const bool coils = area.key().second == kReadCoils;
            const QVector<StripPlace> places = stripPlaces(area.value(), scaleOf(coils));
            page->startDrawing(kDrawingWidth, kRow * (places.last().row + 1), QStringLiteral("Addresses read"));
            page->label(0, kTop + 15, "strong", QStringLiteral("station %1").arg(area.key().first));
            page->label(72, kTop + 15, "", coils ? QStringLiteral("coils") : QStringLiteral("registers"));
            for (int i = 0; i < places.size(); ++i) {
                writeRequest(*area.value().at(i), places.at(i), page);
            }
            page->end();
            page->end();
        }
    }

private:
    // The same for all stations, so that they can be compared: the longest request fits into a row, and the fullest
    // area too where that leaves enough of a coil or register.
    double scaleOf(bool coils) const {
        double longest = 1;
        double fitting = coils ? kMostPerCoil : kMostPerRegister;
        const double enough = coils ? 1 : 4;
        for (auto area = areas_.constBegin(); area != areas_.constEnd(); ++area) {
            double quantity = 0;
            for (const PlannedRequest *request : area.value()) {
                const bool counts = coils == (area.key().second == kReadCoils);
                quantity += counts ? request->frame.quantity : 0;
                longest = std::max(longest, counts ? double(request->frame.quantity) : 0);
            }
            fitting = std::min(
                fitting, std::max(enough, (kStripWidth - 4 * kStripBreak * area.value().size()) / (quantity + 1)));
        }
        return std::min(fitting, kStripWidth / longest);
    }

    QMap<QPair<int, int>, Requests> areas_;  // by station and function
};

static_assert(kLeft + kStripWidth <= kDrawingWidth, "the strips fit");

}  // namespace

void writeStrips(const PassPlan &plan, PageWriter *page) {
    page->element("h2", {}, QStringLiteral("What is read of each station"));
    page->element("p", {},
                  QStringLiteral("Modbus addresses of each request, to scale; what lies between them is left out."));
    QVector<PageWriter::LegendEntry> legend{{"value", QStringLiteral("wanted"), QString()},
                                            {"gap", QStringLiteral("gap, read along"), QString()},
                                            {"bad", QStringLiteral("edge: cuts a 32-bit value"), QString()}};
    if (plan.isMeasured) {
        legend.append({"bad", QStringLiteral("whole block: refused or not answered"), QString()});
    }
    page->legend(legend);
    Strips(plan).write(page);
}
