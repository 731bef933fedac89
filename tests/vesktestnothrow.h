#ifndef VESKTESTNOTHROW_H
#define VESKTESTNOTHROW_H

// Replaces the non-throwing allocation function of the test program that
// includes this header (once, in its one source): the library takes its
// records and cached blocks with new (std::nothrow).

#include <new>

// Lets this many non-throwing allocations of the current thread through,
// fails the next one and disarms; -1 leaves every allocation alone.
static thread_local int allocationsBeforeFailure = -1;

void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    if (allocationsBeforeFailure >= 0 && allocationsBeforeFailure-- == 0)
        return nullptr;
    try {
        return ::operator new(size);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

#endif // VESKTESTNOTHROW_H
