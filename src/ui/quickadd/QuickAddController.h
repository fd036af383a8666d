/// The panel that takes a task from anywhere.
#pragma once

#include "ui/quickadd/QuickAddModel.h"
#include "ui/windows/KeyboardLoss.h"

#include <QElapsedTimer>
#include <QObject>
#include <functional>
#include <memory>
#include <string>

class QQmlEngine;
class QQuickWindow;
class QWindow;

namespace quillo {

/// Owns the panel: made when it is first shown, hidden thereafter, never closed. It goes when it has done its
/// work and when another window takes the keyboard. Belongs to the main thread.
class QuickAddController final : public QObject {
    Q_OBJECT

public:
    /// Asked for when the panel is first shown; outlives the controller.
    using Engine = std::function<QQmlEngine&()>;

    /// Called before each showing: a window manager forgets what it knew of a window that was hidden.
    using Preparation = std::function<void(QWindow&)>;

    QuickAddController(Engine engine, QuickAddModel::Submission submission, Preparation prepare = {});
    ~QuickAddController() override;

    /// With an empty field, on the screen with the pointer, with the keyboard in it. The token (of XDG
    /// activation; may be empty) lets it have the keyboard where windows may not take it by themselves.
    void show(const std::string& activationToken = {});

    /// Nothing where it is not shown.
    void hide();

    bool isVisible() const;

private:
    bool make();
    void place();
    void move();
    void leave();

    const Engine engine_;
    const Preparation prepare_;
    QuickAddModel model_;
    std::unique_ptr<QQuickWindow> panel_; ///< none before the first showing
    KeyboardLoss loss_;
    bool hadKeyboard_ = false; ///< the panel, or a menu of it, when the keyboard last went elsewhere
    QElapsedTimer sinceMove_;  ///< not valid before the first move
};

} // namespace quillo
