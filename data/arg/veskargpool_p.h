#ifndef VESKARGPOOL_P_H
#define VESKARGPOOL_P_H

// Internal to the library: the per-thread cache of the fixed-size blocks in
// which argument values keep their record and holder together.
//
// A block is plain heap memory; the cache only delays giving it back. A
// thread keeps the blocks it frees, up to a limit, and hands them out again
// to the values it builds next. A value built in one thread and dropped in
// another therefore simply moves its block into the second thread's cache,
// and a thread that ends gives its cached blocks back to the heap, so no
// block ever depends on the thread that first allocated it.

#include <cstddef>

namespace VeskArgPool {

// Large enough for the record header and every holder but the biggest
// records, which get a block of their own size from the heap.
constexpr std::size_t BlockSize = 64;

// A block of BlockSize bytes, aligned for any holder; null when the heap
// has no memory left.
void* allocate() noexcept;

// Takes back a block that allocate() gave, in any thread.
void deallocate(void* block) noexcept;

} // namespace VeskArgPool

#endif // VESKARGPOOL_P_H
