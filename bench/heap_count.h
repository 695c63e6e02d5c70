// What a piece of work asks of the heap. Linking heap_count.cpp puts a counter before malloc and its kin, which costs a
// branch while nothing is counted.
#ifndef DRAVO_BENCH_HEAP_COUNT_H
#define DRAVO_BENCH_HEAP_COUNT_H

#include <functional>

struct HeapCount {
    long allocations;  // malloc, calloc and realloc
    long mostBytes;    // in use at one moment beyond those before
};

/// Counts what this thread does while work runs; other threads use no heap meanwhile.
HeapCount countHeap(const std::function<void()> &work);

#endif  // DRAVO_BENCH_HEAP_COUNT_H
