#include "ui/windows/MakeWindow.h"

#include "base/Log.h"
#include "ui/icons/SymbolImages.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QString>

namespace quillo {

void prepareEngine(QQmlEngine& engine) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QString::fromLatin1(SymbolImages::name), new SymbolImages);
}

std::unique_ptr<QQuickWindow> makeWindow(QQmlEngine& engine, const QString& file,
                                         const QVariantMap& properties) {
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Quillo/") + file));
    // One that is not ready crashes Qt 6.4 where properties are given.
    std::unique_ptr<QObject> object(component.isReady() ? component.createWithInitialProperties(properties)
                                                        : nullptr);
    if (qobject_cast<QQuickWindow*>(object.get()) == nullptr) {
        log(file.toStdString() + " cannot be shown: " + component.errorString().toStdString());
        return nullptr;
    }
    std::unique_ptr<QQuickWindow> window(static_cast<QQuickWindow*>(object.release()));
    // Pictures that nothing shows any more go with the window: Qt would wake each half minute to look for
    // them.
    QObject::connect(window.get(), &QWindow::visibleChanged, window.get(),
                     [made = window.get()](bool visible) {
                         if (!visible)
                             made->releaseResources();
                     });
    return window;
}

} // namespace quillo
