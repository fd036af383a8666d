/// The weights that are part of the program.
#pragma once

#include <span>

namespace quillo::classifier {

/// The bytes of weights.bin, as training/ has written them. They are there until the program ends.
std::span<const unsigned char> embeddedWeights();

/// Gives the memory back into which they were read. Whoever reads them again has them read from the program's
/// file again.
void releaseEmbeddedWeights();

} // namespace quillo::classifier
