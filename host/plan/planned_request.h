// One request of a pass with everything that the plan tells of it. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_PLANNED_REQUEST_H
#define DRAVO_HOST_PLAN_PLANNED_REQUEST_H

#include "host/plan/dry_run.h"
#include "host/plan/read_frame.h"
#include "host/plan/request_cost.h"
#include "host/plan/variable_index.h"

enum PlanNote {
    NoteGap = 1,      // it reads elements that nobody asked for
    NoteCut = 2,      // it holds one half of a 32-bit value
    NoteSplit = 4,    // at an area's bound, where the next wanted element goes into another request
    NoteTooLong = 8,  // more than Modbus allows
};
constexpr PlanNote kPlanNotes[] = {NoteGap, NoteCut, NoteSplit, NoteTooLong};

/// In words; the first letter stands for it where there is little room, and no two are alike.
QString noteText(PlanNote note);

/// Labels that a plan keeps of one request, at most; further variables are only counted.
constexpr int kMostLabels = 1000;

struct ElementRun {
    int first;
    int count;
};

struct PlannedRequest {
    dravo::Elements elements{};  // as carried on the line
    QByteArray sent;             // the frame
    ReadFrame frame{};           // what it says
    int bytesOut = 0;
    int bytesIn = 0;
    qint64 us = 0;
    int variables = 0;  // that it reads some elements of
    QStringList labels;
    QVector<ElementRun> wanted;  // runs of elements that somebody asked for, ascending
    int wantedCount = 0;
    bool cutAtStart = false;  // between the halves of a 32-bit value
    bool cutAtEnd = false;
    int notes = 0;  // of PlanNote

    // Filled in by a measurement.
    qint64 measuredUs = -1;  // below 0: never answered at the first try
    QString failure;         // of its last exchange, or that there was none; empty: it was good

    int gap() const { return elements.count - wantedCount; }
    /// Data bits of the reply for each element.
    double bitsPerElement() const {
        return frame.function == kReadCoils ? 1 : 16.0 * frame.quantity / qMax(1, elements.count);
    }
};

PlannedRequest plannedRequest(const DryRequest &dry, const VariableIndex &variables, const RequestCost &cost);

#endif  // DRAVO_HOST_PLAN_PLANNED_REQUEST_H
