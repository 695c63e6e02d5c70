// Ctrl-C and its kin: a flag that every wait of the program looks at. Any thread.
#ifndef DRAVO_HOST_PUMP_STOP_SIGNAL_H
#define DRAVO_HOST_PUMP_STOP_SIGNAL_H

/// From now on SIGINT, SIGTERM and SIGHUP set the flag and SIGPIPE and SIGXFSZ are ignored (writes then
/// fail with EPIPE and EFBIG).
void watchStopSignals();

bool stopRequested();

/// Waits; a signal ends it early. milliseconds above 0.
void sleepUnlessStopped(int milliseconds);

#endif  // DRAVO_HOST_PUMP_STOP_SIGNAL_H
