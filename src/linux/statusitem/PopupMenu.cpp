#include "linux/statusitem/PopupMenu.h"

#include "linux/statusitem/ScreenPlaces.h"

#include <QAction>
#include <QCursor>
#include <QString>

namespace quillo {

namespace {

/// Ampersands stand for themselves; what follows the tabulator is shown as the shortcut, without being one.
QString text(const MenuItem& item) {
    QString text = QString::fromStdString(item.title).replace(QLatin1Char('&'), QStringLiteral("&&"));
    if (!item.shortcut.empty())
        text += QLatin1Char('\t') + QString::fromStdString(item.shortcut);
    return text;
}

} // namespace

void PopupMenu::show(const std::vector<MenuItem>& items, const std::optional<ScreenPoint>& place) {
    if (menu_)
        menu_->close();
    menu_.reset(new QMenu);
    for (const MenuItem& item : items) {
        switch (item.kind) {
        case MenuItem::Kind::separator:
            menu_->addSeparator();
            break;
        case MenuItem::Kind::action: {
            QAction* line = menu_->addAction(text(item));
            line->setEnabled(item.action != nullptr);
            // Later, once the menu is gone from the screen.
            if (item.action)
                connect(line, &QAction::triggered, this, item.action, Qt::QueuedConnection);
            break;
        }
        }
    }
    menu_->popup(place ? toQtCoordinates(*place) : QCursor::pos());
}

} // namespace quillo

#include "moc_PopupMenu.cpp"
