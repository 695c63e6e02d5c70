#include "host/plan/plan_columns.h"

#include "host/plan/element_range.h"

namespace {

using Request = PlannedRequest;

QString measuredText(const Request &request) {
    return request.measuredUs < 0 ? QStringLiteral("-") : msText(request.measuredUs);
}

}  // namespace

QVector<PlanColumn> planColumns(bool measured) {
    QVector<PlanColumn> columns{
        {"st", "station", true, [](const Request &r) { return QString::number(r.elements.station); }},
        {"fn", "function", true, [](const Request &r) { return QString::number(r.frame.function); }},
        {"start", "start", true, [](const Request &r) { return QString::number(r.frame.start); }},
        {"qty", "quantity", true, [](const Request &r) { return QString::number(r.frame.quantity); }},
        {"elements", "type and elements", false, [](const Request &r) { return elementRangeText(r.elements); }},
        {"gap", "gap", true, [](const Request &r) { return QString::number(r.gap()); }},
        {"out", "bytes out", true, [](const Request &r) { return QString::number(r.bytesOut); }},
        {"in", "bytes in", true, [](const Request &r) { return QString::number(r.bytesIn); }},
        {"ms", "ms", true, [](const Request &r) { return msText(r.us); }},
    };
    if (measured) {
        columns.append({"measured", "ms measured", true, &measuredText});
    }
    return columns;
}

QString msText(qint64 us) {
    return QString::number(double(us) / 1000, 'f', 1);
}

QString timeText(qint64 us) {
    constexpr qint64 kLongUs = 10000000;
    return us < kLongUs ? msText(us) + QStringLiteral(" ms")
                        : QString::number(double(us) / 1e6, 'f', 1) + QStringLiteral(" s");
}

QString differenceText(qint64 us, qint64 ofUs) {
    if (us == ofUs) {
        return QStringLiteral("the same");
    }
    const double percent = 100.0 * double(us - ofUs) / double(qMax<qint64>(1, ofUs));
    return (percent < 0 ? QString() : QStringLiteral("+")) + QString::number(percent, 'f', 1) + QStringLiteral(" %");
}

QVector<PlanAlternative> planAlternatives(const PassPlan &plan) {
    QVector<PlanAlternative> alternatives{
        {QStringLiteral("--merge %1").arg(mergeName(plan.otherMerge.merge)), plan.otherMerge},
        {QStringLiteral("--frame-limit %1, the best of 1 to %2").arg(plan.bestLimit.frameLimit).arg(kMostFrameLimit),
         plan.bestLimit}};
    for (const OtherPass &pass : plan.bauds) {
        alternatives.append({QStringLiteral("--baud %1").arg(pass.baud), pass});
    }
    return alternatives;
}
