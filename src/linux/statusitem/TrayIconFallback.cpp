#include "linux/statusitem/TrayIconFallback.h"

#include "linux/statusitem/CountBadge.h"
#include "linux/statusitem/ScreenPlaces.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <utility>

namespace quillo {

TrayIconFallback::TrayIconFallback(SymbolPicture draw) : pictures_(std::move(draw)) {
    connect(&icon_, &QSystemTrayIcon::activated, this, &TrayIconFallback::activated);
}

bool TrayIconFallback::hasTray() {
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void TrayIconFallback::show(const StatusItemContent& content) {
    QIcon icon;
    for (const QImage& picture : pictures_.of(content.face.symbol, badgeText(content.label)))
        icon.addPixmap(QPixmap::fromImage(picture));
    icon_.setIcon(icon);
    QString toolTip = QString::fromStdString(content.face.toolTip);
    if (!content.label.isEmpty())
        toolTip += QLatin1Char('\n') + content.label;
    icon_.setToolTip(toolTip);
    icon_.show();
}

void TrayIconFallback::activated(QSystemTrayIcon::ActivationReason reason) {
    const auto click = [this](StatusItemClick::Button button) {
        // The click came to us as an event, with the keys that were down.
        const bool control = QGuiApplication::keyboardModifiers().testFlag(Qt::ControlModifier);
        clicked.emit({button, control, pointerPlace(), {}});
    };
    switch (reason) {
    case QSystemTrayIcon::Context:
        click(StatusItemClick::Button::right);
        break;
    case QSystemTrayIcon::Trigger:
    case QSystemTrayIcon::DoubleClick: // The second of two clicks, of which the first came as such.
    case QSystemTrayIcon::MiddleClick:
        click(StatusItemClick::Button::left);
        break;
    case QSystemTrayIcon::Unknown:
        break;
    }
}

} // namespace quillo

#include "moc_TrayIconFallback.cpp"
