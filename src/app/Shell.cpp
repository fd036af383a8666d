#include "app/Shell.h"

#include "base/Log.h"
#include "base/Product.h"
#include "symbols/SymbolImage.h"

#include <QGuiApplication>
#include <QLocale>
#include <QTimer>
#include <chrono>
#include <functional>
#include <utility>

namespace quillo {

namespace {

constexpr std::chrono::seconds languageModelGetsReadyAfter(1);
constexpr std::chrono::seconds updaterStartsAfter(10);

bool isX11() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

/// Does something with the windows, which are loaded for it; nothing where they cannot be.
template <class Action>
void withWindows(WindowsLibrary& library, Action action) {
    if (Windows* windows = library.windows())
        action(*windows);
}

class PopoverOfLibrary final : public PopoverPlace {
public:
    PopoverOfLibrary(WindowsLibrary& library, std::function<void()> lookForNews)
        : library_(library), lookForNews_(std::move(lookForNews)) {}

    void toggle(const std::optional<ScreenPoint>& anchor, const std::string& token) override {
        lookForNews_();
        withWindows(library_, [&](Windows& windows) { windows.popover().toggle(anchor, token); });
    }
    void show(const std::optional<ScreenPoint>& anchor, const std::string& token) override {
        lookForNews_();
        withWindows(library_, [&](Windows& windows) { windows.popover().show(anchor, token); });
    }

private:
    WindowsLibrary& library_;
    const std::function<void()> lookForNews_;
};

class QuickAddOfLibrary final : public QuickAddPlace {
public:
    explicit QuickAddOfLibrary(WindowsLibrary& library) : library_(library) {}

    bool isVisible() const override {
        return library_.windowsSoFar() != nullptr && library_.windowsSoFar()->quickAdd().isVisible();
    }
    void show(const std::string& token) override {
        withWindows(library_, [&](Windows& windows) { windows.quickAdd().show(token); });
    }
    void hide() override {
        if (Windows* windows = library_.windowsSoFar())
            windows->quickAdd().hide();
    }

private:
    WindowsLibrary& library_;
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
    QCoreApplication::setApplicationName(QStringLiteral("Quillo"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(product::version));
    QGuiApplication::setDesktopFileName(QString::fromLatin1(product::desktopFile));
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

Shell::Shell(Application& application, std::optional<control::Show::Window> wanted)
    : application_(application),
      appearance_(isX11() ? DesktopAppearance::Windows::x11 : DesktopAppearance::Windows::alwaysBlended),
      statusItem_(symbolImage), library_([this] {
          return WindowsDependencies{.services = services_->services(),
                                     .preferences = services_->preferences(),
                                     .mainExecutor = services_->mainExecutor(),
                                     .clock = services_->clock(),
                                     .calendar = services_->calendar(),
                                     .addTask = [this](const std::string& text) { services_->addTask(text); },
                                     .listShown = [this](bool shown) { services_->setListShown(shown); },
                                     .zoneChanged = services_->zoneChanged,
                                     .hotKeys = hotKeys(),
                                     .hotKeyCenter = *hotKeyCenter_,
                                     .appearance = appearance_,
                                     .actions = menuActions_,
                                     .cloud = services_->cloud(),
                                     .syncCommands = services_->syncCommands()};
      }),
      popover_(std::make_unique<PopoverOfLibrary>(library_, [this] { services_->lookForNews(); })),
      quickAdd_(std::make_unique<QuickAddOfLibrary>(library_)) {
    const QString folder = QStringLiteral(":/translations");
    if (translator_.load(QLocale(), QStringLiteral("quillo"), QStringLiteral("_"), folder) ||
        translator_.load(QStringLiteral("quillo_en"), folder)) {
        QCoreApplication::installTranslator(&translator_);
        // Texts run as their language does, whatever the desktop's other texts do.
        QGuiApplication::setLayoutDirection(QLocale(translator_.language()).textDirection());
    }

    menuActions_ = {
        .quickAdd = [this] { quickAdd_->show({}); },
        .exportMarkdown = [this] { exportTarget().exportMarkdown(); },
        .exportJson = [this] { exportTarget().exportJson(); },
        .openStatistics =
            [this](const std::string& token) {
                withWindows(library_, [&](Windows& windows) { windows.openStatistics(token); });
            },
        .openSettings =
            [this](const std::string& token) {
                withWindows(library_, [&](Windows& windows) { windows.openSettings(token); });
            },
        .checkForUpdates =
            [this] { withWindows(library_, [](Windows& windows) { windows.checkForUpdates(); }); },
        .quit = [this] { application_.quit(); },
    };
    delegate_.emplace(AppDelegateDependencies{
        .statusItem = statusItem_,
        .todoStore = [this]() -> TodoStore& { return services_->services().todoStore(); },
        .popover = [this]() -> PopoverPlace& { return *popover_; },
        .hotKeys = [this]() -> HotKeyManager& { return hotKeys(); },
        .quickAdd = [this]() -> QuickAddPlace& { return *quickAdd_; },
        .startUpdater = [this] { startUpdater(); },
        .prepareLanguageModel = [this] { prepareLanguageModel(); },
        .actions = menuActions_,
    });
    connections_.push_back(application_.staying.connect([this] { delegate_->showStatusItem(); }));
    connections_.push_back(
        application_.opened.connect([this, wanted](AppServices& services) { open(services, wanted); }));
    connections_.push_back(application_.windowRequested.connect(
        [this](control::Show::Window window, const std::string& activationToken) {
            if (const Outcome shown = show(window, activationToken); !shown)
                log(shown.error().message);
        }));
}

Shell::~Shell() {
    if (services_)
        services_->showWindows(nullptr);
}

void Shell::open(AppServices& services, std::optional<control::Show::Window> wanted) {
    services_ = &services;
    services.showWindows([this](control::Show::Window window) { return show(window, {}); });
    delegate_->finishLaunching();
    if (wanted) {
        if (const Outcome shown = show(*wanted, {}); !shown)
            log(shown.error().message);
    }
}

Outcome Shell::show(control::Show::Window window, const std::string& activationToken) {
    Outcome shown = delegate_->show(window, activationToken);
    if (shown && library_.windowsSoFar() == nullptr)
        return Error{"the windows cannot be loaded; the log says why"};
    return shown;
}

void Shell::startUpdater() {
    // Only who wants it to look by itself needs it before a window, and not in the first seconds.
    if (services_->preferences().boolean(preference_keys::updatesAutomatic).value_or(false))
        QTimer::singleShot(updaterStartsAfter, &later_, [this] {
            withWindows(library_, [](Windows& windows) { windows.startUpdater(); });
        });
}

void Shell::prepareLanguageModel() {
    // Not before the icon is there: the bar has yet to answer. A text that is typed earlier has it get ready.
    QTimer::singleShot(languageModelGetsReadyAfter, &later_, [this] { services_->prewarmLanguageModel(); });
}

ExportTarget& Shell::exportTarget() {
    if (!exportTarget_)
        exportTarget_.emplace(ExportTargetDependencies{
            .tasks = [this]() -> const TaskList& { return services_->services().todoStore().items(); },
            .calendar = services_->calendar(),
            .panel = savePanel_,
        });
    return *exportTarget_;
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

} // namespace quillo
