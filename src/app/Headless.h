/// The program without a screen.
#pragma once

namespace quillo {

/// Whether the environment names a display, of X11 or Wayland.
bool thereIsADisplay();

/// Goes on as `quillo-headless`, which does the same and is not linked with anything that draws: it takes a
/// third of the memory. Returns an exit code only if that program is not there.
int continueHeadless(char** argv);

} // namespace quillo
