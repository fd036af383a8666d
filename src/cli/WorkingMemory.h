/// Memory for a command that works on a long list, taken before it is needed.
#pragma once

#include <cstddef>

namespace quillo::cli {

/// Readies memory for about `bytes` of allocations. The kernel hands memory out a page of 4 KiB at a time, on
/// first touch. Reading, encoding and saving a list of 10,000 tasks touches some 800 such pages, which
/// takes a twelfth of the command's processor time; asked for at once, the same memory comes in pages of 2
/// MiB where the system has them. Without effect, if the kernel cannot or the amount is small.
///
/// For a process that ends soon: what is taken is kept until then. Call it before other threads start.
void readyMemory(std::size_t bytes);

} // namespace quillo::cli
