/// The keys that change what a click means.
#pragma once

namespace quillo {

/// Whether Control is down at this moment. Bars do not tell; an X server is asked, which answers whichever
/// program has the keyboard. Elsewhere it cannot be known: false.
bool controlHeld();

} // namespace quillo
