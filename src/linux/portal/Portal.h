/// Where the desktop's portal is on the session bus.
/// Source: https://flatpak.github.io/xdg-desktop-portal/docs/common-conventions.html
#pragma once

#include <QString>

namespace quillo::portal {

inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

/// The interface that tells, among others, an interface's "version".
inline const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");

} // namespace quillo::portal
