#include "support/heap.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::int64_t> held = 0;
std::atomic<std::int64_t> most = 0;

} // namespace

void heap::startPeak() { held = most = 0; }

std::size_t heap::peak() { return static_cast<std::size_t>(most); }

void *operator new(std::size_t size)
{
    void *const block = std::malloc(std::max<std::size_t>(size, 1));
    if (block == nullptr)
        throw std::bad_alloc();
    held += static_cast<std::int64_t>(malloc_usable_size(block));
    most = std::max(most.load(), held.load());
    return block;
}

void operator delete(void *block) noexcept
{
    if (block != nullptr)
        held -= static_cast<std::int64_t>(malloc_usable_size(block));
    std::free(block);
}

void operator delete(void *block, std::size_t) noexcept { operator delete(block); }
