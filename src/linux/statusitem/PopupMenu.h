/// A menu of our own, for bars that leave showing it to us.
#pragma once

#include "ports/StatusItem.h"

#include <QMenu>
#include <QObject>
#include <memory>
#include <optional>
#include <vector>

namespace quillo {

class PopupMenu final : public QObject {
    Q_OBJECT

public:
    /// Shows the menu with a corner at the place, or at the pointer, in place of one that is shown.
    void show(const std::vector<MenuItem>& items, const std::optional<ScreenPoint>& place);

private:
    struct Later {
        void operator()(QMenu* menu) const { menu->deleteLater(); }
    };

    std::unique_ptr<QMenu, Later> menu_; ///< may be asked for another from inside its own event
};

} // namespace quillo
