#include "windows/ProgramWindows.h"

#include "linux/windows/EveryDesktop.h"
#include "ui/icons/SymbolImages.h"

#include <QQuickWindow>
#include <QSGRendererInterface>
#include <utility>

namespace quillo {

namespace {

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

ProgramWindows::ProgramWindows(const WindowsDependencies& dependencies)
    : with_(dependencies), theme_(dependencies.appearance) {
    // Measured: a third of the memory and half the time to the first popover that OpenGL takes.
    if (qgetenv("QUILLO_RENDERER") != "opengl")
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    Theme::setInstance(&theme_);
}

ProgramWindows::~ProgramWindows() {
    engine_.reset(); // What QML made goes before what it shows.
}

PopoverPlace& ProgramWindows::popover() {
    if (popover_)
        return *popover_;
    Services& services = with_.services;
    popoverModel_ = std::make_unique<PopoverModel>(PopoverModelDependencies{
        .store = services.todoStore(),
        .setReminder = services.setReminder(),
        .reviewPrompts = services.reviewPrompts(),
        .notifications = services.notifications(),
        .clock = with_.clock,
        .calendar = with_.calendar,
        .statsStore = [this]() -> StatsStore& { return with_.services.statsStore(); },
        .addTask = with_.addTask,
        .actions = {.quickAdd = with_.actions.quickAdd,
                    .exportMarkdown = with_.actions.exportMarkdown,
                    .exportJson = with_.actions.exportJson,
                    .openStatistics = with_.actions.openStatistics,
                    .openSettings = with_.actions.openSettings,
                    .checkForUpdates = with_.actions.checkForUpdates,
                    .quit = with_.actions.quit},
    });
    connections_.push_back(with_.zoneChanged.connect([this] { popoverModel_->tasks()->renewDueLabels(); }));
    popover_ = std::make_unique<ShownPopover>([this]() -> QQmlEngine& { return engine(); }, *popoverModel_,
                                              with_.appearance);
    return *popover_;
}

QuickAddPlace& ProgramWindows::quickAdd() {
    if (!quickAdd_)
        quickAdd_ =
            std::make_unique<ShownQuickAdd>([this]() -> QQmlEngine& { return engine(); }, with_.addTask);
    return *quickAdd_;
}

QQmlEngine& ProgramWindows::engine() {
    if (!engine_) {
        engine_ = std::make_unique<QQmlEngine>();
        engine_->addImportPath(QStringLiteral("qrc:/qt/qml"));
        engine_->addImageProvider(QString::fromLatin1(SymbolImages::name), new SymbolImages);
    }
    return *engine_;
}

} // namespace quillo
