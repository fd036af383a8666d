/// How keeping in step fares, printed.
#pragma once

#include "cli/ExitCode.h"
#include "sync/SyncPlace.h"

namespace quillo::cli {

/// Prints the place, how it fares, and which computers have left a list there.
ExitCode showSyncStatus(bool json);

/// Prints whether the keyring has the password of that place; nothing where it wants none.
void printWhereThePasswordIs(const SyncPlace& place);

} // namespace quillo::cli
