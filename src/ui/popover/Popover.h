/// The popover with the task list.
#pragma once

#include "base/Signal.h"
#include "ports/AppearanceSettings.h"
#include "ports/BorrowedKeyboard.h"
#include "ports/StatusItem.h"
#include "ui/windows/KeyboardLoss.h"

#include <QElapsedTimer>
#include <QObject>
#include <QVariantAnimation>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QQmlEngine;
class QQuickWindow;
class QWindow;

namespace quillo {

class PopoverModel;

/// Owns its window: made when it is first shown, hidden thereafter, never closed. It goes when another window
/// takes the keyboard. It fades in and out where the desktop composes its windows and motion is wanted.
/// Belongs to the main thread.
class Popover final : public QObject {
    Q_OBJECT

public:
    /// Asked for when the popover is first shown; outlives it, as do model and appearance.
    using Engine = std::function<QQmlEngine&()>;

    /// Keeps the window manager off a window, where windows may do without; else null.
    using WithoutWindowManager = std::function<std::unique_ptr<BorrowedKeyboard>(QWindow&)>;

    Popover(Engine engine, PopoverModel& model, const AppearanceSettings& appearance,
            WithoutWindowManager withoutWindowManager = {});
    ~Popover() override;

    /// False from the moment on at which it begins to go.
    bool isShown() const { return shown_; }

    /// Beside the icon that `anchor` is on, or in the middle of the screen with the pointer. The token (of
    /// XDG activation; may be empty) lets it have the keyboard where windows may not take it by themselves.
    void show(const std::optional<ScreenPoint>& anchor, const std::string& activationToken);

    /// Nothing where it is not shown.
    void close();

    /// Closes it where it is shown, and shows it otherwise; unless it has just closed because this very click
    /// took the keyboard away.
    void toggle(const std::optional<ScreenPoint>& anchor, const std::string& activationToken);

Q_SIGNALS:
    void shownChanged(bool shown);

private:
    bool make();
    void place(const std::optional<ScreenPoint>& anchor);
    void setShown(bool shown);
    void fadeTo(double opacity);

    const Engine engine_;
    PopoverModel& model_;
    const AppearanceSettings& appearance_;
    const WithoutWindowManager withoutWindowManager_;
    std::unique_ptr<QQuickWindow> window_;       ///< none before the first showing
    std::unique_ptr<BorrowedKeyboard> keyboard_; ///< none where the window manager gives it to the window
    bool shown_ = false;
    KeyboardLoss loss_;
    QVariantAnimation fading_;
    QElapsedTimer sinceFocusLoss_; ///< runs from when it closed by itself
    Connection appearanceChanged_;
};

} // namespace quillo
