// The host's communication thread: the two calls of the call loop, and what happens inside callbacks.
#ifndef DRAVO_FUZZ_DRIVER_HOST_H
#define DRAVO_FUZZ_DRIVER_HOST_H

#include "fuzz/driver_operations.h"
#include "fuzz/driver_replies.h"

/// Callbacks make calls of their own by these choices, until the next time.
void chooseInCallbacksBy(Choices *choices, Budget *budget);

Operation registerCallbacks(bool var, bool list);
/// ComCommunication.
Operation nextRequest();
/// DataCom.
Operation answer(const Reply &reply);

#endif  // DRAVO_FUZZ_DRIVER_HOST_H
