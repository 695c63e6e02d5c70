// Counts the work of the driver, whose objects are compiled to report each basic block: steps are the same on every run
// and every machine.
#ifndef DRAVO_TESTS_COUNTED_STEPS_H
#define DRAVO_TESTS_COUNTED_STEPS_H

#include <functional>

/// Basic blocks of the driver, with the containers and sorts inside it, and pointers that Qt moved.
long stepsOf(const std::function<void()> &work);

/// Basic blocks while listMutex is held.
long stepsWithList(const std::function<void()> &work);

#endif  // DRAVO_TESTS_COUNTED_STEPS_H
