/// How the desktop wants windows to look, as a test says.
#pragma once

#include "ports/AppearanceSettings.h"

namespace quillo::support {

class SettableAppearance final : public AppearanceSettings {
public:
    const Observable<Appearance>& appearance() const override { return value; }

    Observable<Appearance> value;
};

} // namespace quillo::support
