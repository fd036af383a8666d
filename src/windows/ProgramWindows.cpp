#include "windows/ProgramWindows.h"

#include "base/Product.h"
#include "linux/hotkey/KeyPositions.h"
#include "linux/loginitem/LoginItemOfThisSession.h"
#include "linux/windows/EveryDesktop.h"
#include "linux/windows/WithoutWindowManager.h"
#include "ui/windows/MakeWindow.h"

#include <QApplication>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <functional>
#include <utility>

namespace quillo {

namespace {

/// The popover, as the shell sees it.
class ShownPopover final : public PopoverPlace {
public:
    ShownPopover(Popover::Engine engine, PopoverModel& model, const AppearanceSettings& appearance,
                 const std::function<void(bool)>& listShown)
        : popover_(std::move(engine), model, appearance, withoutWindowManager) {
        QObject::connect(&popover_, &Popover::shownChanged, &popover_, listShown);
    }

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

ProgramWindows::ProgramWindows(const WindowsDependencies& dependencies)
    : with_(dependencies), theme_(dependencies.appearance) {
    // Measured: a third of the memory and half the time to the first popover that OpenGL takes.
    if (qgetenv("QUILLO_RENDERER") != "opengl")
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    Theme::setInstance(&theme_);
}

ProgramWindows::~ProgramWindows() {
    // What QML made goes before what it shows.
    updates_.reset();
    statistics_.reset();
    settings_.reset();
    quickAdd_.reset();
    popover_.reset();
    engine_.reset();
}

PopoverPlace& ProgramWindows::popover() {
    if (popover_)
        return *popover_;
    Services& services = with_.services;
    popoverModel_ = std::make_unique<PopoverModel>(PopoverModelDependencies{
        .store = services.todoStore(),
        .setReminder = services.setReminder(),
        .reviewPrompts = services.reviewPrompts(),
        .feedback = feedback_,
        .notifications = services.notifications(),
        .clock = with_.clock,
        .calendar = with_.calendar,
        .statsStore = [this]() -> StatsStore& { return with_.services.statsStore(); },
        .addTask = with_.addTask,
        .actions = with_.actions,
    });
    connections_.push_back(with_.zoneChanged.connect([this] { popoverModel_->tasks()->renewDueLabels(); }));
    popover_ = std::make_unique<ShownPopover>([this]() -> QQmlEngine& { return engine(); }, *popoverModel_,
                                              with_.appearance, with_.listShown);
    return *popover_;
}

QuickAddPlace& ProgramWindows::quickAdd() {
    if (!quickAdd_)
        quickAdd_ =
            std::make_unique<ShownQuickAdd>([this]() -> QQmlEngine& { return engine(); }, with_.addTask);
    return *quickAdd_;
}

void ProgramWindows::openSettings(const std::string& activationToken) {
    if (!settings_) {
        loginItem_ = loginItemOfThisSession(
            with_.mainExecutor,
            QCoreApplication::translate("Quillo", "Remind you of your tasks from login on."));
        settingsModel_ = std::make_unique<SettingsModel>(SettingsModelDependencies{
            .preferences = with_.preferences,
            .store = with_.services.todoStore(),
            .loginItem = *loginItem_,
            .recorder = {.hotKeys = with_.hotKeys,
                         .center = with_.hotKeyCenter,
                         .keyCode = keyCodeAt,
                         .beep = [] { QApplication::beep(); }},
            .sync = {.preferences = with_.preferences,
                     .cloud = with_.cloud,
                     .commands = with_.syncCommands,
                     .store = with_.services.todoStore(),
                     .folderPanel = folderPanel_,
                     .clock = with_.clock,
                     .calendar = with_.calendar},
            .statsStore = [this]() -> StatsStore& { return with_.services.statsStore(); },
            .actions = with_.actions,
            .automaticallyChecksForUpdates = [this] { return updater().automaticallyChecksForUpdates(); },
            .setAutomaticallyChecksForUpdates =
                [this](bool automatic) { updater().setAutomaticallyChecksForUpdates(automatic); },
            .openUrl = [this](const std::string& address) { urlOpener_.open(address); },
        });
        settings_ = window("SettingsWindow.qml", settingsModel_.get());
    }
    settings_->show(activationToken);
}

void ProgramWindows::openStatistics(const std::string& activationToken) {
    if (!statistics_) {
        statsModel_ = std::make_unique<StatsModel>(with_.services.statsStore());
        statistics_ = window("StatsWindow.qml", statsModel_.get());
    }
    statistics_->show(activationToken);
}

void ProgramWindows::startUpdater() {
    updater().start();
}

void ProgramWindows::checkForUpdates() {
    updater().checkForUpdates();
}

UpdaterController& ProgramWindows::updater() {
    if (!updater_) {
        appcast_ = std::make_unique<AppcastUpdater>(AppcastUpdaterOptions::ofThisProgram(), with_.preferences,
                                                    with_.clock, with_.mainExecutor);
        updateTimer_ = std::make_unique<TimerfdTimer>();
        updater_ = std::make_unique<UpdaterController>(UpdaterControllerDependencies{
            .updater = *appcast_,
            .preferences = with_.preferences,
            .clock = with_.clock,
            .timer = *updateTimer_,
            .showWindow = [this] { updates_->show({}); },
            .offerWindow = [this] { updates_->showAside(); },
            .hideWindow = [this] { updates_->hide(); },
            .version = product::version,
        });
        updates_ = window("UpdateWindow.qml", &updater_->model());
    }
    return *updater_;
}

std::unique_ptr<KeptWindow> ProgramWindows::window(const char* file, QObject* model) {
    return std::make_unique<KeptWindow>([this]() -> QQmlEngine& { return engine(); },
                                        QString::fromLatin1(file),
                                        QVariantMap{{QStringLiteral("model"), QVariant::fromValue(model)}});
}

QQmlEngine& ProgramWindows::engine() {
    if (!engine_) {
        engine_ = std::make_unique<QQmlEngine>();
        prepareEngine(*engine_);
    }
    return *engine_;
}

} // namespace quillo
