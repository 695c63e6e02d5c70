// The library called from several threads at a time in every way that its headers allow. The thread sanitizer raises
// the alarm where a lock is missing.
#ifndef DRAVO_TESTS_THREADS_H
#define DRAVO_TESTS_THREADS_H

#include <chrono>
#include <string>

// Each returns what went wrong, or what never happened though there was time for it; empty: nothing.

/// Two rebuilds of the cyclic list at a time.
std::string laterRebuildStays(std::chrono::milliseconds time);

/// The driver in its plain call loop: one communication thread with good, bad and missing replies and with callbacks,
/// two threads that read and write values, one that rebuilds the cyclic list and switches stations. In both write
/// modes, with controller frames and remote ones.
std::string driverThreads(std::chrono::milliseconds time);

/// The line engine on a line in virtual time, and two threads that read values beside it.
std::string lineThreads(std::chrono::milliseconds time);

#endif  // DRAVO_TESTS_THREADS_H
