/// The look of every window, for QML.
#pragma once

#include "ports/AppearanceSettings.h"
#include "ui/theme/ThemeColours.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QObject>

class QJSEngine;
class QQmlEngine;

namespace quillo {

/// Follows the desktop's appearance, and the application's palette and font where a platform theme has set
/// them. Lives on the main thread, as long as the QML engines that use it. Sizes are in device-independent
/// pixels.
class Theme final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(bool highContrast READ highContrast NOTIFY changed)
    Q_PROPERTY(bool reduceMotion READ reduceMotion NOTIFY changed)
    Q_PROPERTY(bool reduceTransparency READ reduceTransparency NOTIFY changed)

    Q_PROPERTY(QColor window READ window NOTIFY changed)
    Q_PROPERTY(QColor material READ material NOTIFY changed)
    Q_PROPERTY(QColor bar READ bar NOTIFY changed)
    Q_PROPERTY(QColor field READ field NOTIFY changed)
    Q_PROPERTY(QColor hover READ hover NOTIFY changed)
    Q_PROPERTY(QColor pressed READ pressed NOTIFY changed)
    Q_PROPERTY(QColor separator READ separator NOTIFY changed)
    Q_PROPERTY(QColor stroke READ stroke NOTIFY changed)
    Q_PROPERTY(QColor focusRing READ focusRing NOTIFY changed)

    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor secondary READ secondary NOTIFY changed)
    Q_PROPERTY(QColor faint READ faint NOTIFY changed)
    Q_PROPERTY(QColor faintText READ faintText NOTIFY changed)
    Q_PROPERTY(QColor placeholder READ placeholder NOTIFY changed)

    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor accentText READ accentText NOTIFY changed)
    Q_PROPERTY(QColor accentSymbol READ accentSymbol NOTIFY changed)
    Q_PROPERTY(QColor accentLabel READ accentLabel NOTIFY changed)

    Q_PROPERTY(QColor doneGreen READ doneGreen NOTIFY changed)
    Q_PROPERTY(QColor onDone READ onDone NOTIFY changed)
    Q_PROPERTY(QColor todayOrange READ todayOrange NOTIFY changed)
    Q_PROPERTY(QColor todayText READ todayText NOTIFY changed)
    Q_PROPERTY(QColor overdueRed READ overdueRed NOTIFY changed)
    Q_PROPERTY(QColor overdueText READ overdueText NOTIFY changed)

    Q_PROPERTY(int fontSize READ fontSize NOTIFY changed)
    Q_PROPERTY(int captionSize READ captionSize NOTIFY changed)
    Q_PROPERTY(int titleSize READ titleSize NOTIFY changed)

public:
    /// `settings` outlives the theme.
    explicit Theme(const AppearanceSettings& settings);

    /// What QML engines made hereafter know as `Theme`. It stays with whoever made it.
    static void setInstance(Theme* theme);

    /// For QML engines; setInstance() has been called before.
    static Theme* create(QQmlEngine* engine, QJSEngine* scripts);

    bool dark() const { return appearance_.dark; }
    bool highContrast() const { return appearance_.highContrast; }
    bool reduceMotion() const { return appearance_.reduceMotion; }
    bool reduceTransparency() const { return appearance_.reduceTransparency; }

    QColor window() const { return colours_.window; }
    QColor material() const { return colours_.material; }
    QColor bar() const { return colours_.bar; }
    QColor field() const { return colours_.field; }
    QColor hover() const { return colours_.hover; }
    QColor pressed() const { return colours_.pressed; }
    QColor separator() const { return colours_.separator; }
    QColor stroke() const { return colours_.stroke; }
    QColor focusRing() const { return colours_.focusRing; }

    QColor text() const { return colours_.text; }
    QColor secondary() const { return colours_.secondary; }
    QColor faint() const { return colours_.faint; }
    QColor faintText() const { return colours_.faintText; }
    QColor placeholder() const { return colours_.placeholder; }

    QColor accent() const { return colours_.accent; }
    QColor accentText() const { return colours_.accentText; }
    QColor accentSymbol() const { return colours_.accentSymbol; }
    QColor accentLabel() const { return colours_.accentLabel; }

    QColor doneGreen() const { return colours_.doneGreen; }
    QColor onDone() const { return colours_.onDone; }
    QColor todayOrange() const { return colours_.todayOrange; }
    QColor todayText() const { return colours_.todayText; }
    QColor overdueRed() const { return colours_.overdueRed; }
    QColor overdueText() const { return colours_.overdueText; }

    int fontSize() const { return fontSize_; }
    int captionSize() const;
    int titleSize() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void changed();

private:
    void update();

    const AppearanceSettings& settings_;
    Appearance appearance_;
    ThemeColours colours_;
    int fontSize_ = 0;
    Connection following_;
};

} // namespace quillo
