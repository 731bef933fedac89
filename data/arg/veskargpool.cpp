#include "veskargpool_p.h"

#include <new>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#define VESK_POISON(address, size) ASAN_POISON_MEMORY_REGION(address, size)
#define VESK_UNPOISON(address, size) ASAN_UNPOISON_MEMORY_REGION(address, size)
#else
#define VESK_POISON(address, size) static_cast<void>(0)
#define VESK_UNPOISON(address, size) static_cast<void>(0)
#endif

// The cache is reached once per value built and once per value dropped. The
// initial-exec model reads it straight from the thread pointer instead of
// asking the dynamic loader each time; it costs a few bytes of the static
// TLS space that the loader keeps for libraries like this one.
#if defined(__GNUC__) && defined(__ELF__)
#define VESK_FAST_TLS __attribute__((tls_model("initial-exec")))
#else
#define VESK_FAST_TLS
#endif

namespace {

// Enough for the values that one burst of work builds and drops again,
// small enough (8 KiB) to leave nothing of note behind in idle threads.
constexpr int maxCached = 128;

struct FreeBlock
{
    FreeBlock* next;
};

// Plain data, so that it needs neither construction nor destruction and
// stays usable while the thread's other objects are being destroyed.
struct Cache
{
    FreeBlock* head;
    int count;
    bool armed;  // the thread's Closer exists and will empty the cache
    bool closed; // the Closer has run: blocks go straight to the heap
};

thread_local Cache cache VESK_FAST_TLS = {nullptr, 0, false, false};

void releaseAll(Cache& c) noexcept
{
    while (FreeBlock* const block = c.head) {
        VESK_UNPOISON(block, VeskArgPool::BlockSize);
        c.head = block->next;
        ::operator delete(block);
    }
    c.count = 0;
}

// Gives the cached blocks back to the heap when its thread ends. Made only
// once the thread first keeps a block, since a thread-local object with a
// destructor costs a guard check on every use.
struct Closer
{
    bool made = false;
    ~Closer()
    {
        cache.closed = true;
        releaseAll(cache);
    }
};

thread_local Closer closer;

} // namespace

void* VeskArgPool::allocate() noexcept
{
    Cache& c = cache;
    FreeBlock* const block = c.head;
    if (!block)
        return ::operator new(BlockSize, std::nothrow);
    VESK_UNPOISON(block, BlockSize);
    c.head = block->next;
    --c.count;
    return block;
}

void VeskArgPool::deallocate(void* memory) noexcept
{
    Cache& c = cache;
    if (c.count >= maxCached || c.closed) {
        ::operator delete(memory);
        return;
    }
    if (!c.armed) {
        closer.made = true;
        c.armed = true;
    }
    auto* const block = static_cast<FreeBlock*>(memory);
    block->next = c.head;
    c.head = block;
    ++c.count;
    VESK_POISON(block, BlockSize);
}
