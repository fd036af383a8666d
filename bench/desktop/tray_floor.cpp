// The least that a Qt program with an icon in the status area is: an icon, and a menu to end it with.
#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
    QApplication loop(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    constexpr int size = 22;
    QPixmap square(size, size);
    square.fill(Qt::white);

    QMenu menu;
    menu.addAction(QStringLiteral("Quit"), &loop, &QApplication::quit);
    QSystemTrayIcon icon{QIcon(square)};
    icon.setContextMenu(&menu);
    icon.show();
    return QApplication::exec();
}
