#include "classifier/EmbeddedWeights.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

// C++20 has no way of its own to take in a file.
asm(R"(
    .section .rodata
    .balign 16
quilloWeightsBegin:
    .incbin ")" QUILLO_WEIGHTS_FILE R"("
quilloWeightsEnd:
    .byte 0
    .previous
    .globl quilloWeightsBegin
    .globl quilloWeightsEnd
    .hidden quilloWeightsBegin
    .hidden quilloWeightsEnd
)");

extern "C" {
extern const unsigned char quilloWeightsBegin[] __attribute__((visibility("hidden")));
extern const unsigned char quilloWeightsEnd[] __attribute__((visibility("hidden")));
}

namespace quillo::classifier {

std::span<const unsigned char> embeddedWeights() {
    return {quilloWeightsBegin, quilloWeightsEnd};
}

void releaseEmbeddedWeights() {
    // Whole pages only; what shares one with them stays.
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto begin = (reinterpret_cast<std::uintptr_t>(quilloWeightsBegin) + page - 1) / page * page;
    const auto end = reinterpret_cast<std::uintptr_t>(quilloWeightsEnd) / page * page;
    if (begin < end)
        ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
}

} // namespace quillo::classifier
