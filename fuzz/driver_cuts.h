// How runs of elements become requests: cut at the frame limit and at area bounds, and merged into cyclic reads. Pure.
#ifndef DRAVO_FUZZ_DRIVER_CUTS_H
#define DRAVO_FUZZ_DRIVER_CUTS_H

#include "korvel_dravo_port.h"

namespace reference {

/// The element limit of one request of a type.
qint64 frameLimit(int maxGroupLength, int type);
int stationInForce(const ComInfo &settings, int ownStation);

/// Copies of whole that hold count elements in order, at most limit each.
QList<RW_VAR> pieces(const RW_VAR &whole, qint64 count, qint64 limit, int addressesEach = 1);
/// A read: one request, or two where it crosses bound.
QList<RW_VAR> readsOf(RW_VAR var, int bound);
/// A write and its data.
QList<RW_VAR> writesOf(RW_VAR var, int bound);

QList<RW_VAR> cyclicReads(const QList<ReadVarEntry> &entries, const ComInfo &settings);
/// The writes that bring values to the device, in the order of sending.
QList<RW_VAR> deviceWrites(const RW_VAR &whole, int maxGroupLength);

}  // namespace reference

#endif  // DRAVO_FUZZ_DRIVER_CUTS_H
