/// Which way of starting at login this session has.
#pragma once

#include "base/Executor.h"
#include "ports/LoginItem.h"

#include <QString>
#include <memory>

namespace quillo {

/// The portal's inside a Flatpak sandbox, whose files no desktop sees; elsewhere the user's autostart folder.
/// `mainExecutor` outlives it; `reason` is PortalLoginItem's.
std::unique_ptr<LoginItem> loginItemOfThisSession(Executor& mainExecutor, const QString& reason);

} // namespace quillo
