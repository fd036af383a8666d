/// How the desktop wants programs to look and move.
#pragma once

#include "base/Observable.h"

#include <optional>

namespace quillo {

/// Red, green and blue from 0 to 1, in sRGB.
struct Colour {
    double red = 0;
    double green = 0;
    double blue = 0;

    friend bool operator==(const Colour&, const Colour&) = default;
};

struct Appearance {
    bool dark = false;
    bool highContrast = false;
    bool reduceMotion = false;
    bool reduceTransparency = false; ///< also where nothing could be seen through: no compositor
    std::optional<Colour> accent;    ///< absent where the desktop has none of its own

    friend bool operator==(const Appearance&, const Appearance&) = default;
};

/// Belongs to the main thread. Until the desktop has answered, its values are those of a desktop that wants
/// nothing special.
class AppearanceSettings {
public:
    virtual ~AppearanceSettings() = default;

    virtual const Observable<Appearance>& appearance() const = 0;
};

} // namespace quillo
