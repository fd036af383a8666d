/// Windows that are described in QML.
#pragma once

#include <QVariantMap>
#include <memory>

class QQmlEngine;
class QQuickWindow;
class QString;

namespace quillo {

/// Gives an engine what the windows ask of it: the place of their module, and the pictures of the symbols.
void prepareEngine(QQmlEngine& engine);

/// The window that `file` of the module Quillo describes, with these properties from the start. Null where it
/// cannot be made, for want of a package of Qt's perhaps; the log says why. Main thread.
std::unique_ptr<QQuickWindow> makeWindow(QQmlEngine& engine, const QString& file,
                                         const QVariantMap& properties);

} // namespace quillo
