#include "heap_count.h"

#include <malloc.h>

#include <algorithm>
#include <cstddef>

namespace {

bool counting = false;
HeapCount count = {0, 0};
long bytes = 0;

void *taken(void *block) {
    if (counting) {
        ++count.allocations;
        bytes += long(malloc_usable_size(block));
        count.mostBytes = std::max(count.mostBytes, bytes);
    }
    return block;
}

void givenBack(void *block) {
    if (counting) {
        bytes -= long(malloc_usable_size(block));
    }
}

}  // namespace

HeapCount countHeap(const std::function<void()> &work) {
    count = {0, 0};
    bytes = 0;
    counting = true;
    work();
    counting = false;
    return count;
}

extern "C" {

// The C library's own, below the names that are replaced.
// NOLINTBEGIN(bugprone-reserved-identifier)
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *block, size_t size);
void __libc_free(void *block);
// NOLINTEND(bugprone-reserved-identifier)

void *malloc(size_t size) {
    return taken(__libc_malloc(size));
}

void *calloc(size_t number, size_t size) {
    return taken(__libc_calloc(number, size));
}

void *realloc(void *block, size_t size) {
    givenBack(block);
    return taken(__libc_realloc(block, size));
}

void free(void *block) {
    givenBack(block);
    __libc_free(block);
}

}  // extern "C"
