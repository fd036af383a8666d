#include "linux/statusitem/DesktopStatusItem.h"

#include "base/Log.h"

#include <QGuiApplication>
#include <QString>
#include <chrono>
#include <utility>

namespace quillo {

namespace {

using namespace std::chrono_literals;

const QString connectionName = QStringLiteral("quillo-status-item");

/// Panels start beside us at login, and are back sooner after a restart.
constexpr std::chrono::milliseconds patience = 2s;

} // namespace

DesktopStatusItem::DesktopStatusItem(SymbolPicture draw)
    : draw_(std::move(draw)),
      bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)),
      item_(draw_, QString::fromLatin1(DBusMenu::path)), watch_(bus_) {
    patience_.setSingleShot(true);
    QObject::connect(&patience_, &QTimer::timeout, &patience_, [this] { fallBack(); });
    connections_.push_back(
        item_.clicked.connect([this](const StatusItemClick& click) { clicked.emit(click); }));
    connections_.push_back(watch_.found.connect([this](bool showsLabels) {
        patience_.stop();
        fallback_.reset();
        item_.setBarShowsLabels(showsLabels);
    }));
    connections_.push_back(watch_.lost.connect([this] { patience_.start(patience); }));
}

DesktopStatusItem::~DesktopStatusItem() {
    QDBusConnection::disconnectFromBus(connectionName);
}

void DesktopStatusItem::setFace(const StatusItemFace& face) {
    content_.face = face;
    show();
    if (!std::exchange(announced_, true))
        announce();
}

void DesktopStatusItem::setTitle(std::string_view title) {
    content_.label = QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())).trimmed();
    show();
}

void DesktopStatusItem::setMenu(MenuMaker maker) {
    menu_.setMaker(std::move(maker));
}

void DesktopStatusItem::showMenu(const std::vector<MenuItem>& menu, const std::optional<ScreenPoint>& place) {
    popup_.show(menu, place);
}

/// Once it has a face.
void DesktopStatusItem::announce() {
    if (!bus_.isConnected()) {
        log("there is no session bus: panels cannot show the status item");
        patience_.start(0ms);
        return;
    }
    bus_.registerObject(QString::fromLatin1(StatusNotifierItem::path), &item_,
                        QDBusConnection::ExportAllContents);
    bus_.registerObject(QString::fromLatin1(DBusMenu::path), &menu_, QDBusConnection::ExportAllContents);
    patience_.start(patience);
    watch_.start();
}

void DesktopStatusItem::show() {
    item_.show(content_);
    if (fallback_)
        fallback_->show(content_);
}

void DesktopStatusItem::fallBack() {
    const bool x11 = QGuiApplication::platformName() == QLatin1String("xcb");
    if (!x11 || !TrayIconFallback::hasTray())
        log("there is no status bar at the moment: the status item is shown as soon as there is one");
    if (!x11)
        return;
    fallback_ = std::make_unique<TrayIconFallback>(draw_);
    fallbackClicks_ =
        fallback_->clicked.connect([this](const StatusItemClick& click) { clicked.emit(click); });
    fallback_->show(content_);
}

} // namespace quillo
