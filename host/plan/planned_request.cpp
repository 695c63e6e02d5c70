#include "host/plan/planned_request.h"

#include "korvel_dravo_elements.h"

namespace {

bool isPairs(const dravo::Variable &variable) {
    const dravo::ElementType *type = dravo::findElementType(variable.elemType);
    return type != nullptr && type->elementClass == dravo::WordPairClass;
}

// Whether an edge of a request lies between the halves of a value.
bool isCutAt(const dravo::Variable &variable, int edge) {
    const int offset = edge - variable.elements.address;
    return isPairs(variable) && offset > 0 && offset < variable.elements.count && offset % 2 != 0;
}

bool isSplit(const dravo::Elements &elements, const VariableIndex &variables) {
    const int bound = dravo::addressMapBound(elements.elemType);
    if (bound == elements.address) {
        return variables.isWanted(elements.station, elements.elemType, bound - 1);
    }
    return bound == elements.address + elements.count && variables.isWanted(elements.station, elements.elemType, bound);
}

void addWanted(PlannedRequest *request, const dravo::Elements &variable) {
    const int end = qMin(request->elements.address + request->elements.count, variable.address + variable.count);
    const int first = qMax(request->elements.address, variable.address);
    if (request->wanted.isEmpty() || request->wanted.last().first + request->wanted.last().count < first) {
        request->wanted.append({first, end - first});
        request->wantedCount += end - first;
    } else {
        ElementRun &last = request->wanted.last();
        const int more = qMax(0, end - last.first - last.count);
        last.count += more;
        request->wantedCount += more;
    }
}

}  // namespace

QString noteText(PlanNote note) {
    switch (note) {
        case NoteGap:
            return QStringLiteral("gap");
        case NoteCut:
            return QStringLiteral("cut 32-bit value");
        case NoteSplit:
            return QStringLiteral("split at a bound");
        case NoteTooLong:
            break;
    }
    return QStringLiteral("more than Modbus allows");
}

PlannedRequest plannedRequest(const DryRequest &dry, const VariableIndex &variables, const RequestCost &cost) {
    PlannedRequest request;
    request.elements = dry.elements;
    request.sent = dry.request;
    request.frame = readFrame(dry.request);
    request.bytesOut = dry.request.size();
    request.bytesIn = dry.reply.size();
    request.us = cost.us(request.bytesOut, request.bytesIn);
    variables.forEach(dry.elements, [&](int place) {
        const dravo::Variable &variable = variables.at(place);
        ++request.variables;
        if (request.labels.size() < kMostLabels) {
            request.labels.append(variable.label);
        }
        addWanted(&request, variable.elements);
        request.cutAtStart = request.cutAtStart || isCutAt(variable, dry.elements.address);
        request.cutAtEnd = request.cutAtEnd || isCutAt(variable, dry.elements.address + dry.elements.count);
    });
    request.notes = (request.gap() > 0 ? NoteGap : 0) | (request.cutAtStart || request.cutAtEnd ? NoteCut : 0) |
                    (isSplit(dry.elements, variables) ? NoteSplit : 0) | (isTooLong(request.frame) ? NoteTooLong : 0);
    return request;
}
