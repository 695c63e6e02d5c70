// What became of a frame, in words. Pure; any thread.
#ifndef DRAVO_HOST_TRACE_VERDICT_TEXT_H
#define DRAVO_HOST_TRACE_VERDICT_TEXT_H

#include "host/trace/drop_counts.h"
#include "host/trace/frame_cut.h"
#include "korvel_dravo_line.h"

/// Of a request, from the event that judges its exchange: "answered after 12.3 ms".
QString requestVerdict(const dravo::LineEvent &exchange);
/// Of the reply that was taken for the answer.
QString replyVerdict(const dravo::LineEvent &exchange);
/// The driver's result code and what it means.
QString resultText(const dravo::LineEvent &exchange);

/// Of a frame that was dropped. @param sinceSendingUs  from the last request's beginning; below 0: there was none.
QString dropVerdict(DropCounts::Why why, qint64 sinceSendingUs);
/// Of bytes that are no frame: why not.
QString damageVerdict(Piece::Kind kind, qint64 sinceSendingUs);

#endif  // DRAVO_HOST_TRACE_VERDICT_TEXT_H
