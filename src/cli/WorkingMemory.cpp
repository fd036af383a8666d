#include "cli/WorkingMemory.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <limits>

namespace quillo::cli {

namespace {

constexpr std::size_t worthwhile = std::size_t{1} << 20;
constexpr std::size_t atMost = std::size_t{64} << 20; // What is taken and not used is a loss.

} // namespace

void readyMemory(std::size_t bytes) {
    if (bytes < worthwhile || bytes > atMost)
        return;
    // All threads allocate from one heap, large blocks too, and nothing is given back.
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());

    void* block = std::malloc(bytes);
    if (block == nullptr)
        return;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const std::uintptr_t start = (reinterpret_cast<std::uintptr_t>(block) + page - 1) / page * page;
    const std::size_t length = bytes - page;
    madvise(reinterpret_cast<void*>(start), length, MADV_HUGEPAGE);
#ifdef MADV_POPULATE_WRITE // glibc 2.35
    madvise(reinterpret_cast<void*>(start), length, MADV_POPULATE_WRITE);
#endif
    std::free(block);
}

} // namespace quillo::cli
