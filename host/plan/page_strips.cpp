#include <QtCore/QMap>
#include <algorithm>

#include "host/plan/page_sections.h"

namespace {

constexpr double kTop = 6;
constexpr double kBar = 20;
constexpr double kRow = 48;
constexpr double kBreak = 14;  // between ranges that are no neighbours
constexpr double kSeam = 2;    // between neighbours
constexpr double kLeast = 3;   // of a request
constexpr double kCharacter = 6.2;
constexpr double kMostPerRegister = 10;
constexpr double kMostPerCoil = 8;

using Requests = QVector<const PlannedRequest *>;

// One area of a station, rows of requests in address order, so wide that the longest request fits into a row.
class Strip {
public:
    Strip(bool coils, const Requests &requests, PageWriter *page) : requests_(requests), page_(page) {
        std::sort(requests_.begin(), requests_.end(),
                  [](const PlannedRequest *a, const PlannedRequest *b) { return a->frame.start < b->frame.start; });
        double quantity = 0;
        double longest = 1;
        for (const PlannedRequest *request : requests_) {
            quantity += request->frame.quantity;
            longest = std::max(longest, double(request->frame.quantity));
        }
        const double fitting = (kDrawingWidth - kBreak * requests_.size()) / quantity;
        scale_ = std::clamp(fitting, std::min(kDrawingWidth / longest, coils ? 1.0 : 3.0),
                            std::min(kDrawingWidth / longest, coils ? kMostPerCoil : kMostPerRegister));
        place();
    }

    void write(const QString &name) {
        page_->element("p", {}, name);
        page_->startDrawing(kDrawingWidth, kRow * (places_.isEmpty() ? 1 : places_.last().row + 1), name);
        for (int i = 0; i < requests_.size(); ++i) {
            writeRequest(*requests_.at(i), places_.at(i));
        }
        page_->end();
        page_->end();
    }

private:
    struct Place {
        int row;
        double x;
        double width;
        bool hasLabel;
    };

    static QString label(const PlannedRequest &request) {
        const int last = request.frame.start + request.frame.quantity - 1;
        return last > request.frame.start ? QStringLiteral("%1-%2").arg(request.frame.start).arg(last)
                                          : QString::number(request.frame.start);
    }

    void place() {
        double x = 0;
        double labelEnd = 0;
        int row = 0;
        int end = -1;
        for (const PlannedRequest *request : requests_) {
            const double width = std::max(kLeast, request->frame.quantity * scale_);
            x += places_.isEmpty() ? 0 : request->frame.start == end ? kSeam : kBreak;
            if (x + width > kDrawingWidth + 0.5) {
                x = labelEnd = 0;
                ++row;
            }
            const bool hasLabel = x >= labelEnd;
            if (hasLabel) {
                labelEnd = x + kCharacter * (label(*request).size() + 1);
            }
            places_.append({row, x, width, hasLabel});
            x += width;
            end = request->frame.start + request->frame.quantity;
        }
    }

    void writeRequest(const PlannedRequest &request, const Place &at) {
        const double y = kTop + kRow * at.row;
        const double perElement = at.width / std::max(1, request.elements.count);
        page_->start("g");
        page_->element("title", {},
                       QStringLiteral("%1: %2 of %3 elements wanted; %4")
                           .arg(label(request))
                           .arg(request.wantedCount)
                           .arg(request.elements.count)
                           .arg(request.failure.isEmpty() ? request.labels.join(QStringLiteral(", ")).left(300)
                                                          : request.failure));
        page_->rect(at.x, y, at.width, kBar, request.failure.isEmpty() ? "gap" : "bad");
        for (const ElementRun &run : request.failure.isEmpty() ? request.wanted : QVector<ElementRun>()) {
            page_->rect(at.x + (run.first - request.elements.address) * perElement, y, run.count * perElement, kBar,
                        "value");
        }
        if (request.cutAtStart) {
            page_->rect(at.x - 1.5, y - 5, 3, kBar + 10, "cut");
        }
        if (request.cutAtEnd) {
            page_->rect(at.x + at.width - 1.5, y - 5, 3, kBar + 10, "cut");
        }
        if (at.hasLabel) {
            page_->label(at.x, y + kBar + 14, "small", label(request));
        }
        page_->end();
    }

    Requests requests_;
    PageWriter *page_;
    double scale_ = 1;
    QVector<Place> places_;
};

}  // namespace

void writeStrips(const PassPlan &plan, PageWriter *page) {
    page->element("h2", {}, QStringLiteral("What is read of each station"));
    page->element("p", {},
                  QStringLiteral("Modbus addresses of each request, to scale; what lies between them is left out."));
    page->legend({{"value", QStringLiteral("wanted"), QString()},
                  {"gap", QStringLiteral("gap, read along"), QString()},
                  {"bad", QStringLiteral("mark: cut 32-bit value; whole block: refused when measured"), QString()}});
    QMap<QPair<int, int>, Requests> areas;  // by station and function
    for (const PlannedRequest &request : plan.requests) {
        areas[{request.elements.station, request.frame.function}].append(&request);
    }
    for (auto area = areas.constBegin(); area != areas.constEnd(); ++area) {
        const bool coils = area.key().second == kReadCoils;
        Strip(coils, area.value(), page)
            .write(QStringLiteral("Station %1, %2")
                       .arg(area.key().first)
                       .arg(coils ? QStringLiteral("coils") : QStringLiteral("registers")));
    }
}
