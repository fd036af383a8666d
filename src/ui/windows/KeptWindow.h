/// A window that is made once.
#pragma once

#include <QString>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <string>

class QQmlEngine;
class QQuickWindow;

namespace quillo {

/// Made when it is first shown, and then kept: closing hides it, and it comes back as it was left. Belongs to
/// the main thread.
class KeptWindow {
public:
    /// Asked for when the window is first shown; outlives it.
    using Engine = std::function<QQmlEngine&()>;

    /// `file` of the QML module Quillo describes the window, which is given the properties. What these point
    /// to outlives it.
    KeptWindow(Engine engine, QString file, QVariantMap properties);
    ~KeptWindow();

    KeptWindow(const KeptWindow&) = delete;
    KeptWindow& operator=(const KeptWindow&) = delete;

    /// In the middle of the screen with the pointer at first, and where it was left thereafter; with the
    /// keyboard in it. The token (of XDG activation; may be empty) lets it have the keyboard where windows
    /// may not take it by themselves.
    void show(const std::string& activationToken);

    /// The same, but the keyboard stays where it is.
    void showAside();

    /// Nothing where it is not shown.
    void hide();

private:
    bool make();

    const Engine engine_;
    const QString file_;
    const QVariantMap properties_;
    std::unique_ptr<QQuickWindow> window_; ///< none before the first showing
};

} // namespace quillo
