#include "host/plan/plan_json.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

double ms(qint64 us) {
    return double(us) / 1000;
}

QJsonObject lineObject(const dravo::LineSettings &line) {
    return {{QStringLiteral("baud"), line.baud},
            {QStringLiteral("bits_per_character"), line.bitsPerCharacter},
            {QStringLiteral("silence_ms"), ms(RequestCost(line).silenceUs())},
            {QStringLiteral("turnaround_ms"), ms(line.replyDelayUs)}};
}

QJsonArray notesArray(int notes) {
    QJsonArray texts;
    for (const PlanNote note : kPlanNotes) {
        if (notes & note) {
            texts.append(noteText(note));
        }
    }
    return texts;
}

QJsonObject requestObject(const PlannedRequest &request, bool measured) {
    QJsonObject object{{QStringLiteral("station"), request.elements.station},
                       {QStringLiteral("function"), request.frame.function},
                       {QStringLiteral("start"), request.frame.start},
                       {QStringLiteral("quantity"), request.frame.quantity},
                       {QStringLiteral("elem_type"), request.elements.elemType},
                       {QStringLiteral("address"), request.elements.address},
                       {QStringLiteral("count"), request.elements.count},
                       {QStringLiteral("labels"), QJsonArray::fromStringList(request.labels)},
                       {QStringLiteral("wanted"), request.wantedCount},
                       {QStringLiteral("gap"), request.gap()},
                       {QStringLiteral("bytes_out"), request.bytesOut},
                       {QStringLiteral("bytes_in"), request.bytesIn},
                       {QStringLiteral("ms"), ms(request.us)},
                       {QStringLiteral("notes"), notesArray(request.notes)}};
    if (measured) {
        object.insert(QStringLiteral("measured_ms"),
                      request.measuredUs < 0 ? QJsonValue(QJsonValue::Null) : QJsonValue(ms(request.measuredUs)));
        object.insert(QStringLiteral("failure"),
                      request.failure.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(request.failure));
    }
    return object;
}

}  // namespace

QByteArray planJson(const PassPlan &plan) {
    QJsonArray requests;
    for (const PlannedRequest &request : plan.requests) {
        requests.append(requestObject(request, plan.isMeasured));
    }
    const QJsonObject best{{QStringLiteral("limit"), plan.bestLimit.frameLimit},
                           {QStringLiteral("pass_ms"), ms(plan.bestLimit.figures.us)}};
    const QJsonObject other{{QStringLiteral("merge"), mergeName(plan.otherMerge.merge)},
                            {QStringLiteral("requests"), plan.otherMerge.figures.requests},
                            {QStringLiteral("pass_ms"), ms(plan.otherMerge.figures.us)}};
    const QJsonObject object{{QStringLiteral("line"), lineObject(plan.line)},
                             {QStringLiteral("merge"), mergeName(plan.line.merge)},
                             {QStringLiteral("frame_limit"), plan.line.frameLimit},
                             {QStringLiteral("requests"), requests},
                             {QStringLiteral("pass_ms"), ms(plan.itself.figures.us)},
                             {QStringLiteral("best_frame_limit"), best},
                             {QStringLiteral("other_merge"), other}};
    return QJsonDocument(object).toJson();
}
