// Starts the tests of the user interface without a screen.
#include <QtQml/qqmlextensionplugin.h>
#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QQuickWindow>

Q_IMPORT_QML_PLUGIN(QuilloPlugin)

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(count, arguments);
    testing::InitGoogleMock(&count, arguments);
    return RUN_ALL_TESTS();
}
