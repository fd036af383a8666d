#include "cli/WorkingMemory.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <limits>
#include <memory>

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

    void* const block = std::malloc(bytes);
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    std::size_t room = bytes;
    void* start = block;
    if (block != nullptr && std::align(page, bytes - page, start, room) != nullptr) {
        madvise(start, bytes - page, MADV_HUGEPAGE);
#ifdef MADV_POPULATE_WRITE // glibc 2.35
        madvise(start, bytes - page, MADV_POPULATE_WRITE);
#endif
    }
    std::free(block);
}

} // namespace quillo::cli
