/// The library that asks language-model servers.
#pragma once

#include "languagemodel/ModelServers.h"

namespace quillo {

/// Loads the library the first time, which may take a while. Any thread. Null where it cannot be loaded; the
/// log says why.
ModelServers* loadModelServers();

} // namespace quillo
