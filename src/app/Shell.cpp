#include "app/Shell.h"

#include "base/Log.h"
#include "base/Product.h"
#include "linux/windows/EveryDesktop.h"
#include "ui/icons/SymbolImages.h"

#include <QGuiApplication>
#include <QLocale>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QtQml/QQmlExtensionPlugin>
#include <utility>

Q_IMPORT_QML_PLUGIN(QuilloPlugin)

namespace quillo {

namespace {

bool isX11() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

/// The popover, as the shell sees it.
class ShownPopover final : public PopoverPlace {
public:
    ShownPopover(Popover::Engine engine, PopoverModel& model, const AppearanceSettings& appearance)
        : popover_(std::move(engine), model, appearance) {}

    void toggle(const std::optional<ScreenPoint>& anchor, const std::string& token) override {
        popover_.toggle(anchor, token);
    }
    void show(const std::optional<ScreenPoint>& anchor, const std::string& token) override {
        popover_.show(anchor, token);
    }

private:
    Popover popover_;
};

class ShownQuickAdd final : public QuickAddPlace {
public:
    ShownQuickAdd(QuickAddController::Engine engine, QuickAddModel::Submission submission)
        : controller_(std::move(engine), std::move(submission), showOnEveryDesktop) {}

    bool isVisible() const override { return controller_.isVisible(); }
    void show(const std::string& token) override { controller_.show(token); }
    void hide() override { controller_.hide(); }

private:
    QuickAddController controller_;
};

} // namespace

void prepareScreen() {
    // Under Wayland no program may place a window, and a popover belongs below its icon: where there is an X
    // server too, that one lets it.
    const QByteArray platform = qgetenv("QUILLO_PLATFORM");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        if (platform == "wayland")
            qputenv("QT_QPA_PLATFORM", "wayland");
        else if (!qEnvironmentVariableIsEmpty("DISPLAY"))
            qputenv("QT_QPA_PLATFORM", "xcb");
    }
    // Measured: a third of the memory and half the time to the first popover that OpenGL takes.
    if (qgetenv("QUILLO_RENDERER") != "opengl")
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QCoreApplication::setApplicationName(QStringLiteral("Quillo"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(product::version));
    QGuiApplication::setDesktopFileName(QString::fromLatin1(product::desktopFile));
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

Shell::Shell(Application& application, std::optional<control::Show::Window> wanted)
    : application_(application),
      appearance_(isX11() ? DesktopAppearance::Windows::x11 : DesktopAppearance::Windows::alwaysBlended),
      theme_(appearance_), statusItem_(symbolImage) {
    Theme::setInstance(&theme_);
    const QString folder = QStringLiteral(":/translations");
    if (translator_.load(QLocale(), QStringLiteral("quillo"), QStringLiteral("_"), folder) ||
        translator_.load(QStringLiteral("quillo_en"), folder))
        QCoreApplication::installTranslator(&translator_);

    menuActions_ = {
        .quickAdd = [this] { quickAdd().show({}); },
        .exportMarkdown = nullptr,
        .exportJson = nullptr,
        .openStatistics = nullptr,
        .openSettings = nullptr,
        .checkForUpdates = nullptr,
        .quit = [this] { application_.quit(); },
    };
    delegate_.emplace(AppDelegateDependencies{
        .statusItem = statusItem_,
        .todoStore = [this]() -> TodoStore& { return services_->services().todoStore(); },
        .popover = [this]() -> PopoverPlace& { return popover(); },
        .hotKeys = [this]() -> HotKeyManager& { return hotKeys(); },
        .quickAdd = [this]() -> QuickAddPlace& { return quickAdd(); },
        .startUpdater = [] {},
        .prepareLanguageModel = [] {},
        .openSettings = menuActions_.openSettings,
        .openStatistics = menuActions_.openStatistics,
        .exportMarkdown = menuActions_.exportMarkdown,
        .exportJson = menuActions_.exportJson,
        .checkForUpdates = menuActions_.checkForUpdates,
        .quit = menuActions_.quit,
    });
    connections_.push_back(application_.staying.connect([this] { delegate_->showStatusItem(); }));
    connections_.push_back(
        application_.opened.connect([this, wanted](AppServices& services) { open(services, wanted); }));
    connections_.push_back(application_.windowRequested.connect(
        [this](control::Show::Window window, const std::string& activationToken) {
            if (const Outcome shown = delegate_->show(window, activationToken); !shown)
                log(shown.error().message);
        }));
}

Shell::~Shell() {
    if (services_)
        services_->showWindows(nullptr);
    engine_.reset(); // What QML made goes before what it shows.
}

void Shell::open(AppServices& services, std::optional<control::Show::Window> wanted) {
    services_ = &services;
    services.showWindows([this](control::Show::Window window) { return delegate_->show(window, {}); });
    delegate_->finishLaunching();
    if (wanted) {
        if (const Outcome shown = delegate_->show(*wanted, {}); !shown)
            log(shown.error().message);
    }
}

PopoverPlace& Shell::popover() {
    if (popover_)
        return *popover_;
    Services& services = services_->services();
    popoverModel_ = std::make_unique<PopoverModel>(PopoverModelDependencies{
        .store = services.todoStore(),
        .setReminder = services.setReminder(),
        .reviewPrompts = services.reviewPrompts(),
        .notifications = services.notifications(),
        .clock = services_->clock(),
        .calendar = services_->calendar(),
        .statsStore = [this]() -> StatsStore& { return services_->services().statsStore(); },
        .addTask = [this](const std::string& text) { services_->addTask(text); },
        .actions = menuActions_,
    });
    connections_.push_back(
        services_->zoneChanged.connect([this] { popoverModel_->tasks()->renewDueLabels(); }));
    popover_ = std::make_unique<ShownPopover>([this]() -> QQmlEngine& { return engine(); }, *popoverModel_,
                                              appearance_);
    return *popover_;
}

QuickAddPlace& Shell::quickAdd() {
    if (!quickAdd_)
        quickAdd_ =
            std::make_unique<ShownQuickAdd>([this]() -> QQmlEngine& { return engine(); },
                                            [this](const std::string& text) { services_->addTask(text); });
    return *quickAdd_;
}

HotKeyManager& Shell::hotKeys() {
    if (!hotKeys_) {
        hotKeyCenter_ = std::make_unique<DesktopHotKeyCenter>(
            DesktopHotKeyCenter::waysOfThisSession(QCoreApplication::translate("Quillo", "Quick Add")));
        hotKeys_ = std::make_unique<HotKeyManager>(services_->preferences(), *hotKeyCenter_,
                                                   services_->mainExecutor());
    }
    return *hotKeys_;
}

QQmlEngine& Shell::engine() {
    if (!engine_) {
        engine_ = std::make_unique<QQmlEngine>();
        engine_->addImportPath(QStringLiteral("qrc:/qt/qml"));
        engine_->addImageProvider(QString::fromLatin1(SymbolImages::name), new SymbolImages);
    }
    return *engine_;
}

} // namespace quillo
