#include <QtCore/QMap>
#include <algorithm>

#include "host/plan/page_sections.h"

namespace {

constexpr double kLeft = 150;
constexpr double kRoom = kDrawingWidth - kLeft - 4;
constexpr double kTop = 8;
constexpr double kBar = 20;
constexpr double kRow = 50;
constexpr double kBreak = 16;  // between ranges that are no neighbours
constexpr double kSeam = 2;    // between neighbours
constexpr double kLeast = 3;   // of a request
constexpr double kCharacter = 6.2;
constexpr double kMostPerRegister = 10;
constexpr double kMostPerCoil = 8;

using Requests = QVector<const PlannedRequest *>;

QString rangeText(const PlannedRequest &request) {
    const int last = request.frame.start + request.frame.quantity - 1;
    return last > request.frame.start ? QStringLiteral("%1-%2").arg(request.frame.start).arg(last)
                                      : QString::number(request.frame.start);
}

double textWidth(const PlannedRequest &request) {
    return kCharacter * rangeText(request).size();
}

struct Place {
    int row;
    double x;
    double width;
    bool hasLabel;
};

// Requests of one area in address order, row after row; scale: of a coil or register.
QVector<Place> placesOf(const Requests &requests, double scale) {
    QVector<Place> places;
    double x = 0;
    double labelEnd = 0;
    int row = 0;
    int end = -1;
    for (const PlannedRequest *request : requests) {
        const double width = std::max(kLeast, request->frame.quantity * scale);
        const bool isNeighbour = request->frame.start == end;
        x = places.isEmpty() ? 0 : isNeighbour ? x + kSeam : std::max(x, labelEnd) + kBreak;
        if (x + std::max(width, textWidth(*request)) > kRoom + 0.5 && x > 0) {
            x = labelEnd = 0;
            ++row;
        }
        const bool hasLabel = x >= labelEnd;
        labelEnd = hasLabel ? x + textWidth(*request) : labelEnd;
        places.append({row, x, width, hasLabel});
        x += width;
        end = request->frame.start + request->frame.quantity;
    }
    return places;
}

QString titleOf(const PlannedRequest &request) {
    constexpr int kMostCharacters = 300;
    return QStringLiteral("%1: %2 of %3 elements wanted; %4")
        .arg(rangeText(request))
        .arg(request.wantedCount)
        .arg(request.elements.count)
        .arg(request.failure.isEmpty() ? request.labels.join(QStringLiteral(", ")).left(kMostCharacters)
                                       : request.failure);
}

void writeRequest(const PlannedRequest &request, const Place &at, PageWriter *page) {
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
        page->label(x, y + kBar + 14, "small", rangeText(request));
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
            const QVector<Place> places = placesOf(area.value(), scaleOf(coils));
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
            fitting = std::min(fitting, std::max(enough, (kRoom - 4 * kBreak * area.value().size()) / (quantity + 1)));
        }
        return std::min(fitting, kRoom / longest);
    }

    QMap<QPair<int, int>, Requests> areas_;  // by station and function
};

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
