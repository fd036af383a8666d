#include "app/AppDelegate.h"

#include "app/Translated.h"

#include <utility>

namespace quillo {

AppDelegate::AppDelegate(AppDelegateDependencies dependencies) : with_(std::move(dependencies)) {}

void AppDelegate::showStatusItem() {
    with_.statusItem.setFace(
        {.symbol = "checklist",
         .symbolDescription = translated(QT_TRANSLATE_NOOP("Quillo", "Quillo — open task list")),
         .toolTip = translated(QT_TRANSLATE_NOOP("Quillo", "Quillo — open task list")),
         .accessibilityLabel = translated(QT_TRANSLATE_NOOP("Quillo", "Quillo")),
         .accessibilityHelp = translated(QT_TRANSLATE_NOOP("Quillo", "Open the Quillo popover"))});
    with_.statusItem.setMenu([this] { return menuOfTheBar(); });
    connections_.push_back(
        with_.statusItem.clicked.connect([this](const StatusItemClick& click) { handleClick(click); }));
}

void AppDelegate::finishLaunching() {
    updateStatusTitle();
    with_.popover();
    HotKeyManager& hotKeys = with_.hotKeys();
    hotKeys.onTrigger = [this, &hotKeys] { toggleQuickAdd(hotKeys.activationToken()); };
    hotKeys.registerHotKey(hotKeys.current().get());
    connections_.push_back(
        with_.todoStore().activeCount().observe([this](std::int64_t) { updateStatusTitle(); }));
    with_.startUpdater();
    with_.prepareLanguageModel();
    launched_ = true;
    if (earlyClick_)
        with_.popover().show(earlyClick_->place, earlyClick_->activationToken);
}

Outcome AppDelegate::show(control::Show::Window window, const std::string& activationToken) {
    if (!launched_)
        return Error{"Quillo is still starting"};
    switch (window) {
    case control::Show::Window::popover:
        with_.popover().show(std::nullopt, activationToken);
        break;
    case control::Show::Window::quickAdd:
        with_.quickAdd().show(activationToken);
        break;
    case control::Show::Window::settings:
        with_.actions.openSettings(activationToken);
        break;
    case control::Show::Window::statistics:
        with_.actions.openStatistics(activationToken);
        break;
    }
    return success();
}

void AppDelegate::toggleQuickAdd(const std::string& activationToken) {
    QuickAddPlace& panel = with_.quickAdd();
    if (panel.isVisible())
        panel.hide();
    else
        panel.show(activationToken);
}

void AppDelegate::handleClick(const StatusItemClick& click) {
    if (click.button == StatusItemClick::Button::right || click.controlHeld)
        showStatusMenu(click.place);
    else if (launched_)
        with_.popover().toggle(click.place, click.activationToken);
    else if (std::exchange(earlyClick_, std::nullopt) == std::nullopt)
        earlyClick_ = click;
}

void AppDelegate::showStatusMenu(const std::optional<ScreenPoint>& place) {
    with_.statusItem.showMenu(statusMenu(), place);
}

void AppDelegate::showExportMenu() {
    with_.statusItem.showMenu({MenuItem::of(translated(QT_TRANSLATE_NOOP("Quillo", "Export as Markdown")), {},
                                            with_.actions.exportMarkdown),
                               MenuItem::of(translated(QT_TRANSLATE_NOOP("Quillo", "Export as JSON")), {},
                                            with_.actions.exportJson)},
                              std::nullopt);
}

void AppDelegate::updateStatusTitle() {
    const std::int64_t count = with_.todoStore().activeCount().get();
    with_.statusItem.setTitle(count != 0 ? " " + std::to_string(count) : "");
}

std::vector<MenuItem> AppDelegate::statusMenu() {
    const auto onceLaunched = [this](const std::function<void()>& action) {
        return launched_ ? action : std::function<void()>();
    };
    return {
        MenuItem::of(translated(QT_TRANSLATE_NOOP("Quillo", "Quick Add…")), "Ctrl+N",
                     onceLaunched(with_.actions.quickAdd)),
        MenuItem::separator(),
        MenuItem::of(translated(QT_TRANSLATE_NOOP("Quillo", "Settings…")), "Ctrl+,",
                     onceLaunched([this] { with_.actions.openSettings({}); })),
        MenuItem::of(translated(QT_TRANSLATE_NOOP("Quillo", "Export…")), "Ctrl+E",
                     onceLaunched([this] { showExportMenu(); })),
        MenuItem::separator(),
        MenuItem::of(translated(QT_TRANSLATE_NOOP("Quillo", "Check for Updates…")), {},
                     onceLaunched(with_.actions.checkForUpdates)),
        MenuItem::separator(),
        MenuItem::of(translated(QT_TRANSLATE_NOOP("Quillo", "Quit Quillo")), "Ctrl+Q", with_.actions.quit),
    };
}

std::vector<MenuItem> AppDelegate::menuOfTheBar() {
    std::vector<MenuItem> menu = statusMenu();
    std::function<void()> open;
    if (launched_)
        open = [this] { with_.popover().show(std::nullopt, {}); };
    menu.insert(menu.begin(), {MenuItem::of(translated(QT_TRANSLATE_NOOP("Quillo", "Open Quillo")), {}, open),
                               MenuItem::separator()});
    return menu;
}

} // namespace quillo
