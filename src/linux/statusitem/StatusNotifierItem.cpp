#include "linux/statusitem/StatusNotifierItem.h"

#include "base/Product.h"
#include "linux/statusitem/CountBadge.h"
#include "linux/statusitem/ModifierKeys.h"
#include "linux/statusitem/ScreenPlaces.h"

#include <QDBusMetaType>
#include <QtEndian>
#include <utility>

namespace quillo {

namespace {

/// No bar has longer ones; a token is a few dozen characters.
constexpr qsizetype longestToken = 1024;

IconPixmap toPixmap(const QImage& picture) {
    const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{image.width(), image.height(), QByteArray(image.sizeInBytes(), Qt::Uninitialized)};
    qToBigEndian<quint32>(image.constBits(), image.sizeInBytes() / 4, pixmap.pixels.data());
    return pixmap;
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.icon << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.icon >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

StatusNotifierItem::StatusNotifierItem(SymbolPicture draw, QString menuPath)
    : menuPath_(std::move(menuPath)), pictures_(std::move(draw)) {
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<IconPixmaps>();
    qDBusRegisterMetaType<StatusToolTip>();
}

void StatusNotifierItem::show(const StatusItemContent& content) {
    const StatusItemContent old = std::exchange(content_, content);
    const StatusItemFace& face = content_.face;
    const bool sameLabel = old.label == content_.label;
    const bool sameBadge = barShowsLabels_ || badgeText(old.label) == badge();
    if (old.face.accessibilityLabel != face.accessibilityLabel)
        Q_EMIT NewTitle();
    if (old.face.symbol != face.symbol || old.face.symbolDescription != face.symbolDescription || !sameBadge)
        Q_EMIT NewIcon();
    if (old.face.toolTip != face.toolTip || !sameLabel)
        Q_EMIT NewToolTip();
    if (!sameLabel)
        Q_EMIT XAyatanaNewLabel(label(), labelGuide());
}

void StatusNotifierItem::setBarShowsLabels(bool showsLabels) {
    if (std::exchange(barShowsLabels_, showsLabels) != showsLabels)
        Q_EMIT NewIcon();
}

QString StatusNotifierItem::id() const {
    return QString::fromLatin1(product::desktopFile);
}

QString StatusNotifierItem::title() const {
    return QString::fromStdString(content_.face.accessibilityLabel);
}

QString StatusNotifierItem::iconName() const {
    return barShowsLabels_ ? QString::fromLatin1(product::desktopFile) + QStringLiteral("-symbolic")
                           : QString();
}

IconPixmaps StatusNotifierItem::iconPixmaps() {
    IconPixmaps pixmaps;
    for (const QImage& picture : pictures_.of(content_.face.symbol, badge()))
        pixmaps.append(toPixmap(picture));
    return pixmaps;
}

QString StatusNotifierItem::iconDescription() const {
    return QString::fromStdString(content_.face.symbolDescription);
}

/// Bars read the second line as markup.
StatusToolTip StatusNotifierItem::toolTip() const {
    return {{}, {}, QString::fromStdString(content_.face.toolTip), content_.label.toHtmlEscaped()};
}

QString StatusNotifierItem::badge() const {
    return barShowsLabels_ ? QString() : badgeText(content_.label);
}

void StatusNotifierItem::click(StatusItemClick::Button button, int x, int y) {
    clicked.emit({button, controlHeld(), placeFromBar(x, y), std::exchange(activationToken_, {})});
}

void StatusNotifierItem::Activate(int x, int y) {
    click(StatusItemClick::Button::left, x, y);
}

/// The middle button: the way to the list in bars whose left button opens the menu.
void StatusNotifierItem::SecondaryActivate(int x, int y) {
    click(StatusItemClick::Button::left, x, y);
}

void StatusNotifierItem::XAyatanaSecondaryActivate(uint) {
    click(StatusItemClick::Button::left, 0, 0);
}

void StatusNotifierItem::ContextMenu(int x, int y) {
    click(StatusItemClick::Button::right, x, y);
}

/// There is nothing to scroll through; bars call it all the same.
void StatusNotifierItem::Scroll(int, const QString&) {}

void StatusNotifierItem::ProvideXdgActivationToken(const QString& token) {
    activationToken_ = token.size() <= longestToken ? token.toStdString() : std::string();
}

} // namespace quillo

#include "moc_StatusNotifierItem.cpp"
