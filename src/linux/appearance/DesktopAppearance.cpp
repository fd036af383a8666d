#include "linux/appearance/DesktopAppearance.h"

namespace quillo {

DesktopAppearance::DesktopAppearance(Windows windows) {
    settingsChanged_ = portal_.changed.connect([this] { update(); });
    if (windows == Windows::x11) {
        compositor_ = std::make_unique<CompositorWatch>();
        compositorChanged_ = compositor_->changed.connect([this] { update(); });
    }
    update();
}

void DesktopAppearance::update() {
    appearance_.set(appearanceOf(portal_.values(), wishes_, !compositor_ || compositor_->present()));
}

} // namespace quillo
