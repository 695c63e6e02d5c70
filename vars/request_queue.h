// What enters the queues of one-shot reads and of writes in their checking modes. No lock: the caller makes sure that
// nobody else changes the queue.
#ifndef DRAVO_VARS_REQUEST_QUEUE_H
#define DRAVO_VARS_REQUEST_QUEUE_H

#include "korvel_dravo_port.h"

/// The checking modes add nothing to a queue this long.
const int kQueueBound = 1024;

/// Works address, station and normalised type of a one-shot read out, into the record itself.
/// @return false: refused. An address text that does not convert leaves the record unchanged.
bool resolveOnceRead(RW_VAR &var, const ComInfo &comInfo);

/// Cuts count elements from var's address on into pieces of at most limit and appends, while the queue is below its
/// bound, those that are not in it yet (same identifiers, node, station, type, address and count), cut at area bounds.
/// var ends as the last piece.
void appendOnceRead(QList<RW_VAR> &queue, RW_VAR &var, int count, int limit);

/// Replaces the first write of the same station, type, address and count behind the head, else appends below the bound.
void appendOrReplaceWrite(QList<RW_VAR> &queue, const RW_VAR &var);

#endif  // DRAVO_VARS_REQUEST_QUEUE_H
