// The pieces of work that are timed, counted and profiled, through the entry points that a host calls.
#ifndef DRAVO_BENCH_DRIVER_WORK_H
#define DRAVO_BENCH_DRIVER_WORK_H

#include <functional>
#include <string>
#include <vector>

#include "korvel_dravo_port.h"

/// A driver with empty lists, bound to settings that stay its own: 120 elements a frame, device writes.
ComInfo &bindHost();

/// The cyclic list: count requests of so many registers, station 1 to stations in turn.
void fillCyclicList(int count, int registers, int stations = 1);

/// A good reply of the controller to a read of so many registers.
QByteArray readReply(int station, int registers);

struct Work {
    const char *name;
    const char *counts;                                 // what its size counts
    std::function<std::function<void()>(int)> prepare;  // size: what is to be done once more with each call
};

const std::vector<Work> &allWork();

/// Throws when there is none of that name.
const Work &workNamed(const std::string &name);

#endif  // DRAVO_BENCH_DRIVER_WORK_H
