/// The library that speaks to the keyring.
#pragma once

#include "sync/Keyring.h"

namespace quillo {

/// Loads the library the first time, which may take a while. Any thread. Null where it cannot be loaded; the
/// log says why.
Keyring* loadKeyring();

} // namespace quillo
