// The update window over the real adapter, with keys of its own and a server of the test's: what the desktop
// program shows where its makers have set a feed.
//
//   update_window FOLDER ADDRESS [PACKAGE_COMMAND]
//
// FOLDER holds quillo-2.0.tar.gz and small files that say how things are to be: "feed" and "place" are the
// ways below ADDRESS to the feed and to the archive, "build" is that of the program, "notes.html" what is
// new; "asks" is "user", or else it looks by itself. It makes the feed, signs it and the archive, and checks
// once. Until it is killed.
#include "linux/MainThreadExecutor.h"
#include "linux/TimerfdTimer.h"
#include "linux/appearance/DesktopAppearance.h"
#include "linux/updates/AppcastUpdater.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/SignedReleases.h"
#include "ui/theme/Theme.h"
#include "ui/windows/KeptWindow.h"
#include "ui/windows/MakeWindow.h"
#include "windows/UpdaterController.h"

#include <QApplication>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QStandardPaths>
#include <QtQml/QQmlExtensionPlugin>
#include <optional>
#include <string>
#include <vector>

Q_IMPORT_QML_PLUGIN(QuilloPlugin)

int main(int count, char** arguments) {
    using namespace quillo;
    if (count < 3)
        return 2;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    const std::filesystem::path folder = arguments[1];
    const std::string address = arguments[2];
    std::optional<std::string> command;
    if (count > 3)
        command = arguments[3];

    const support::SigningKey key;
    const std::string archive = support::bytesOf(folder / "quillo-2.0.tar.gz");
    const std::vector<support::ReleaseEntry> releases{{.url = address + support::bytesOf(folder / "place"),
                                                       .length = archive.size(),
                                                       .signature = key.sign(archive),
                                                       .notes = support::bytesOf(folder / "notes.html")}};
    support::publish(folder, support::feedOf(releases), key);

    DesktopAppearance appearance(DesktopAppearance::Windows::x11);
    Theme theme(appearance);
    Theme::setInstance(&theme);
    support::InMemoryPreferences preferences;
    const SystemClock clock;
    MainThreadExecutor mainExecutor;
    AppcastUpdater updater(
        {.feed = QUrl(QString::fromStdString(address + support::bytesOf(folder / "feed"))),
         .keys = support::keysOf(key.publicKey()),
         .build = support::bytesOf(folder / "build"),
         .downloadFolder = [] { return QStandardPaths::writableLocation(QStandardPaths::DownloadLocation); },
         .packageCommand = [command] { return command; },
         .trustLoopback = true},
        preferences, clock, mainExecutor);
    TimerfdTimer timer;
    QQmlEngine engine;
    prepareEngine(engine);
    KeptWindow* shown = nullptr;
    UpdaterController controller({.updater = updater,
                                  .preferences = preferences,
                                  .clock = clock,
                                  .timer = timer,
                                  .showWindow = [&] { shown->show({}); },
                                  .offerWindow = [&] { shown->showAside(); },
                                  .hideWindow = [&] { shown->hide(); },
                                  .version = "1.0"});
    KeptWindow window([&]() -> QQmlEngine& { return engine; }, QStringLiteral("UpdateWindow.qml"),
                      {{QStringLiteral("model"), QVariant::fromValue(&controller.model())}});
    shown = &window;
    if (support::bytesOf(folder / "asks") == "user")
        controller.checkForUpdates();
    else
        timer.fired.emit();
    return QApplication::exec();
}
