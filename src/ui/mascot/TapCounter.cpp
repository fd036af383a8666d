#include "ui/mascot/TapCounter.h"

namespace quillo {

bool TapCounter::tap(Instant now) {
    taps_.push_back(now);
    std::erase_if(taps_, [now](Instant tap) { return now - tap >= memory; });
    if (taps_.size() < wanted)
        return false;
    taps_.clear();
    return true;
}

} // namespace quillo
