/// The status item as panels read it from the session bus.
#pragma once

#include "base/Signal.h"
#include "linux/statusitem/StatusItemContent.h"
#include "linux/statusitem/StatusPictures.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QList>
#include <QObject>
#include <QString>
#include <string>

namespace quillo {

/// A picture as it goes over the bus: rows from the top, four bytes a pixel in the order alpha, red, green,
/// blue, not premultiplied.
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};
using IconPixmaps = QList<IconPixmap>;

struct StatusToolTip {
    QString iconName;
    IconPixmaps icon;
    QString title;
    QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusToolTip& toolTip);

/// org.kde.StatusNotifierItem, with what the Ayatana bars add for text beside the icon. Made known to bars by
/// StatusBarWatch. https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem/StatusNotifierItem/
class StatusNotifierItem final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
    Q_PROPERTY(QString IconThemePath READ none CONSTANT)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(quillo::IconPixmaps IconPixmap READ iconPixmaps)
    Q_PROPERTY(QString IconAccessibleDesc READ iconDescription)
    Q_PROPERTY(QString OverlayIconName READ none CONSTANT)
    Q_PROPERTY(quillo::IconPixmaps OverlayIconPixmap READ noPixmaps CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ none CONSTANT)
    Q_PROPERTY(quillo::IconPixmaps AttentionIconPixmap READ noPixmaps CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ none CONSTANT)
    Q_PROPERTY(quillo::StatusToolTip ToolTip READ toolTip)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide CONSTANT)

public:
    /// Where bars look for it.
    static constexpr const char* path = "/StatusNotifierItem";

    StatusNotifierItem(SymbolPicture draw, QString menuPath);

    /// Announces what of it is new.
    void show(const StatusItemContent& content);

    /// In a bar that shows the label the icon goes by its name, to be drawn in the bar's own colour. In any
    /// other it is a picture with the label as a badge: given a name, they would take no picture.
    void setBarShowsLabels(bool showsLabels);

    Signal<const StatusItemClick&> clicked;

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const;
    QString title() const;
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    bool itemIsMenu() const { return false; } // Some bars take it for true where it is not said.
    QDBusObjectPath menu() const { return QDBusObjectPath(menuPath_); }
    QString iconName() const;
    IconPixmaps iconPixmaps();
    QString iconDescription() const;
    StatusToolTip toolTip() const;
    QString label() const { return content_.label; }
    QString labelGuide() const { return QStringLiteral("99"); }
    QString none() const { return {}; }
    IconPixmaps noPixmaps() const { return {}; }

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void XAyatanaSecondaryActivate(uint timestamp);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString& orientation);
    void ProvideXdgActivationToken(const QString& token);

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewToolTip();
    void XAyatanaNewLabel(const QString& label, const QString& guide);

private:
    QString badge() const;
    void click(StatusItemClick::Button button, int x, int y);

    const QString menuPath_;
    StatusPictures pictures_;
    StatusItemContent content_;
    bool barShowsLabels_ = false;
    std::string activationToken_; ///< for the next click
};

} // namespace quillo
