// The sections of the plan's page, each with its drawing. Pure; any thread.
#ifndef DRAVO_HOST_PLAN_PAGE_SECTIONS_H
#define DRAVO_HOST_PLAN_PAGE_SECTIONS_H

#include "host/plan/page_writer.h"
#include "host/plan/pass_plan.h"

constexpr double kDrawingWidth = 1080;

/// Into what the time of the pass goes.
void writeShares(const PassPlan &plan, PageWriter *page);
/// When which station is asked, request by request.
void writeTimeline(const PassPlan &plan, PageWriter *page);
/// Pass time against frame limit.
void writeCurves(const PassPlan &plan, PageWriter *page);
/// What is read of each station's address space.
void writeStrips(const PassPlan &plan, PageWriter *page);
/// What other settings would make of the pass.
void writePasses(const PassPlan &plan, PageWriter *page);
/// Every request.
void writeRequests(const PassPlan &plan, PageWriter *page);

#endif  // DRAVO_HOST_PLAN_PAGE_SECTIONS_H
