/// How the desktop wants programs to look and move, on Linux.
#pragma once

#include "linux/appearance/AppearanceRules.h"
#include "linux/appearance/CompositorWatch.h"
#include "linux/appearance/SettingsPortal.h"
#include "ports/AppearanceSettings.h"

#include <memory>

namespace quillo {

/// The settings portal's word, then the desktops' own settings, then what the environment asks of this
/// program alone. Works without a portal and without a bus.
class DesktopAppearance final : public AppearanceSettings {
public:
    enum class Windows {
        x11,          ///< which may or may not be composited
        alwaysBlended ///< Wayland
    };

    explicit DesktopAppearance(Windows windows);

    const Observable<Appearance>& appearance() const override { return appearance_; }

private:
    void update();

    const AppearanceWishes wishes_ = appearanceWishes();
    Observable<Appearance> appearance_;
    SettingsPortal portal_;
    std::unique_ptr<CompositorWatch> compositor_; ///< on X11
    Connection settingsChanged_;
    Connection compositorChanged_;
};

} // namespace quillo
