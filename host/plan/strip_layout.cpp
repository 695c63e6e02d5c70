#include "host/plan/strip_layout.h"

#include <algorithm>

namespace {

constexpr double kSeam = 2;   // between neighbours
constexpr double kLeast = 3;  // of a request
constexpr double kCharacter = 6.2;

double textWidth(const PlannedRequest &request) {
    return kCharacter * addressesText(request).size();
}

}  // namespace

QString addressesText(const PlannedRequest &request) {
    const int last = request.frame.start + request.frame.quantity - 1;
    return last > request.frame.start ? QStringLiteral("%1-%2").arg(request.frame.start).arg(last)
                                      : QString::number(request.frame.start);
}

QVector<StripPlace> stripPlaces(const Requests &requests, double scale) {
    QVector<StripPlace> places;
    double x = 0;
    double labelEnd = 0;
    int row = 0;
    int end = -1;
    for (const PlannedRequest *request : requests) {
        const double width = std::max(kLeast, request->frame.quantity * scale);
        const bool isNeighbour = request->frame.start == end;
        x = places.isEmpty() ? 0 : isNeighbour ? x + kSeam : std::max(x, labelEnd) + kStripBreak;
        if (x + std::max(width, textWidth(*request)) > kStripWidth + 0.5 && x > 0) {
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
