/// The composition root of the windows.
#pragma once

#include "app/Windows.h"
#include "base/Signal.h"
#include "ui/popover/Popover.h"
#include "ui/popover/PopoverModel.h"
#include "ui/quickadd/QuickAddController.h"
#include "ui/theme/Theme.h"

#include <QQmlEngine>
#include <memory>
#include <vector>

namespace quillo {

class ProgramWindows final : public Windows {
public:
    explicit ProgramWindows(const WindowsDependencies& dependencies);
    ~ProgramWindows() override;

    PopoverPlace& popover() override;
    QuickAddPlace& quickAdd() override;

private:
    QQmlEngine& engine();

    const WindowsDependencies with_;

    // In the order in which they are made; each may use those above it.
    Theme theme_;
    std::unique_ptr<PopoverModel> popoverModel_;
    std::unique_ptr<QQmlEngine> engine_;
    std::unique_ptr<PopoverPlace> popover_;
    std::unique_ptr<QuickAddPlace> quickAdd_;
    std::vector<Connection> connections_;
};

} // namespace quillo
