// The least that a Qt Quick program with a list in a window is, drawn as Quillo draws: see ListFloor.qml.
// SIGUSR1 takes the window away and brings it back.
#include <sys/signalfd.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QSocketNotifier>
#include <QUrl>
#include <csignal>

int main(int argc, char** argv) {
    sigset_t toggling;
    sigemptyset(&toggling);
    sigaddset(&toggling, SIGUSR1);
    sigprocmask(SIG_BLOCK, &toggling, nullptr);
    const int toggles = signalfd(-1, &toggling, SFD_CLOEXEC);

    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication loop(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/qt/qml/ListFloor/ListFloor.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    const QSocketNotifier notifier(toggles, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, window, [toggles, window] {
        signalfd_siginfo toggle;
        if (read(toggles, &toggle, sizeof toggle) != sizeof toggle)
            return;
        if (window->isVisible()) {
            window->hide();
        } else {
            window->show();
            window->raise();
            window->requestActivate();
        }
    });
    return QGuiApplication::exec();
}
