/// A list on its way between devices.
#pragma once

#include "ports/Data.h"

namespace quillo {

/// The list, in its stored form but not checked, and the moment of the change that led to it, in seconds
/// since 1970; finite and not negative.
struct StampedBytes {
    Data items;
    double stamp = 0;

    friend bool operator==(const StampedBytes&, const StampedBytes&) = default;
};

} // namespace quillo
