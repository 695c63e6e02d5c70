// Ctrl-C and its kin: a flag that every wait of the program looks at. Any thread.
#ifndef DRAVO_HOST_PUMP_STOP_SIGNAL_H
#define DRAVO_HOST_PUMP_STOP_SIGNAL_H

/// From now on SIGINT, SIGTERM and SIGHUP set the flag. Not before the files are read that a run begins with: a pipe
/// that nobody writes to is waited for, and only a signal ends that.
void watchStopSignals();

/// From now on SIGPIPE and SIGXFSZ are ignored: writes fail with EPIPE and EFBIG.
void ignoreFileSignals();

bool stopRequested();

/// Waits; a signal ends it early. milliseconds above 0.
void sleepUnlessStopped(int milliseconds);

#endif  // DRAVO_HOST_PUMP_STOP_SIGNAL_H
