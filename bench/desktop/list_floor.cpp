// The least that a Qt Quick program with a list in a window is, drawn as Quillo draws: see ListFloor.qml.
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QUrl>

int main(int argc, char** argv) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication loop(argc, argv);
    QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/qt/qml/ListFloor/ListFloor.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
