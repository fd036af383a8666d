/// Addresses, opened by what the desktop has for them.
#pragma once

#include "ports/UrlOpener.h"

namespace quillo {

/// By way of Qt, which starts xdg-open, or asks the portal inside a sandbox. Needs a QGuiApplication.
class DesktopUrlOpener final : public UrlOpener {
public:
    void open(const std::string& address) override;
};

} // namespace quillo
