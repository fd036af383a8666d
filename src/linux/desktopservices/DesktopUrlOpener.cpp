#include "linux/desktopservices/DesktopUrlOpener.h"

#include "base/Log.h"

#include <QByteArray>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMetaObject>
#include <QUrl>

namespace quillo {

void DesktopUrlOpener::open(const std::string& address) {
    const QUrl url = QUrl::fromEncoded(QByteArray::fromStdString(address), QUrl::StrictMode);
    // Later, so that the click that asked for it is answered first.
    QMetaObject::invokeMethod(
        qGuiApp,
        [url] {
            if (!QDesktopServices::openUrl(url))
                log("the desktop has nothing that opens " + url.scheme().toStdString() + " addresses");
        },
        Qt::QueuedConnection);
}

} // namespace quillo
