// What holds after every operation: the driver is where the model is, and no lock is left held.
#ifndef DRAVO_FUZZ_DRIVER_PROMISES_H
#define DRAVO_FUZZ_DRIVER_PROMISES_H

#include "fuzz/driver_model.h"
#include "fuzz/promise.h"

bool sameRecord(const RW_VAR &a, const RW_VAR &b);
bool sameList(const QList<RW_VAR> &a, const QList<RW_VAR> &b);

/// Of the cache only what was touched since the last call is looked at, and its size.
void promiseState(reference::Model &model);
/// Every element of the cache.
void promiseValues(const reference::Model &model);

#endif  // DRAVO_FUZZ_DRIVER_PROMISES_H
