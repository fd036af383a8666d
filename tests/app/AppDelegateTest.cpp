#include "app/AppDelegate.h"

#include "base/ManualExecutor.h"
#include "base/NotificationCenter.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingHotKeyCenter.h"
#include "support/RecordingReminderCenter.h"
#include "support/TodoItemBuilder.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::Task;
using testing::ElementsAre;
using testing::IsEmpty;

using Journal = std::vector<std::string>;

class FakeStatusItem : public StatusItem {
public:
    explicit FakeStatusItem(Journal& journal) : journal_(journal) {}

    void setFace(const StatusItemFace& given) override {
        journal_.push_back("status item");
        face = given;
    }
    void setTitle(std::string_view given) override {
        journal_.push_back("title \"" + std::string(given) + "\"");
        title = given;
    }
    void setMenu(MenuMaker given) override { maker = std::move(given); }
    void showMenu(const std::vector<MenuItem>& given, const std::optional<ScreenPoint>& at) override {
        journal_.push_back("menu");
        menu = given;
        place = at;
    }

    StatusItemFace face;
    std::string title = "unset";
    MenuMaker maker;
    std::vector<MenuItem> menu;
    std::optional<ScreenPoint> place;

private:
    Journal& journal_;
};

class FakePopover : public PopoverPlace {
public:
    explicit FakePopover(Journal& journal) : journal_(journal) {}
    void toggle(const std::optional<ScreenPoint>& anchor, const std::string& token) override {
        journal_.push_back("toggle popover");
        lastAnchor = anchor;
        lastToken = token;
    }
    void show(const std::optional<ScreenPoint>& anchor, const std::string& token) override {
        journal_.push_back("show popover");
        lastAnchor = anchor;
        lastToken = token;
    }
    std::optional<ScreenPoint> lastAnchor;
    std::string lastToken;

private:
    Journal& journal_;
};

class FakeQuickAdd : public QuickAddPlace {
public:
    explicit FakeQuickAdd(Journal& journal) : journal_(journal) {}
    bool isVisible() const override { return visible; }
    void show(const std::string& token) override {
        journal_.push_back("show quick add");
        visible = true;
        lastToken = token;
    }
    void hide() override {
        journal_.push_back("hide quick add");
        visible = false;
    }
    bool visible = false;
    std::string lastToken;

private:
    Journal& journal_;
};

struct AppDelegateTest : testing::Test {
    Journal journal;
    support::InMemoryPreferences preferences;
    support::InMemoryCloudStore cloud;
    support::RecordingReminderCenter reminders;
    support::FixedClock clock;
    NotificationCenter notifications;
    ManualExecutor mainExecutor;
    support::RecordingHotKeyCenter hotKeyCenter;
    FakeStatusItem statusItem{journal};
    FakePopover popover{journal};
    FakeQuickAdd quickAdd{journal};
    std::optional<TodoStore> store;
    std::optional<HotKeyManager> hotKeys;
    const MenuActions actions{
        .quickAdd = [this] { quickAdd.show({}); },
        .exportMarkdown = note("Markdown"),
        .exportJson = note("JSON"),
        .openStatistics = [this](const std::string& token) { journal.push_back("statistics " + token); },
        .openSettings = [this](const std::string& token) { journal.push_back("settings " + token); },
        .checkForUpdates = note("check for updates"),
        .quit = note("quit"),
    };
    std::optional<AppDelegate> delegate;

    std::function<void()> note(const char* what) {
        return [this, what] { journal.emplace_back(what); };
    }

    void make() {
        delegate.emplace(AppDelegateDependencies{
            .statusItem = statusItem,
            .todoStore = [this]() -> TodoStore& {
                if (!store) {
                    journal.push_back("list");
                    store.emplace(TodoStoreDependencies{preferences, cloud, reminders, clock, notifications,
                                                        mainExecutor});
                }
                return *store;
            },
            .popover = [this]() -> PopoverPlace& {
                journal.push_back("popover");
                return popover;
            },
            .hotKeys = [this]() -> HotKeyManager& {
                journal.push_back("shortcut");
                return hotKeys.emplace(preferences, hotKeyCenter, mainExecutor);
            },
            .quickAdd = [this]() -> QuickAddPlace& { return quickAdd; },
            .startUpdater = note("updater"),
            .prepareLanguageModel = note("language model"),
            .actions = actions,
        });
    }
    void launch() {
        make();
        delegate->showStatusItem();
        delegate->finishLaunching();
        journal.clear();
    }
    void click(StatusItemClick::Button button, bool controlHeld = false) {
        statusItem.clicked.emit({button, controlHeld, ScreenPoint{30, 4}, "token"});
    }
    void choose(const std::vector<MenuItem>& menu, const std::string& title) {
        for (const MenuItem& item : menu) {
            if (item.title == title)
                item.action();
        }
    }
    static std::vector<std::string> lines(const std::vector<MenuItem>& menu) {
        std::vector<std::string> result;
        for (const MenuItem& item : menu)
            result.push_back(item.kind == MenuItem::Kind::separator ? "--"
                             : item.shortcut.empty()                ? item.title
                                                                    : item.title + "  " + item.shortcut);
        return result;
    }
};

TEST_F(AppDelegateTest, LaunchesInOrder) {
    make();
    delegate->showStatusItem();
    EXPECT_THAT(journal, ElementsAre("status item"));
    delegate->finishLaunching();
    EXPECT_THAT(journal, ElementsAre("status item", "list", "title \"\"", "popover", "shortcut", "updater",
                                     "language model"));
    EXPECT_EQ(hotKeyCenter.registrations.size(), 1U);
    EXPECT_EQ(reminders.statusQueries, 0);
}

TEST_F(AppDelegateTest, TheItemSaysWhatItIs) {
    launch();
    EXPECT_EQ(statusItem.face.symbol, "checklist");
    EXPECT_EQ(statusItem.face.symbolDescription, "Quillo — open task list");
    EXPECT_EQ(statusItem.face.toolTip, "Quillo — open task list");
    EXPECT_EQ(statusItem.face.accessibilityLabel, "Quillo");
    EXPECT_EQ(statusItem.face.accessibilityHelp, "Open the Quillo popover");
}

TEST_F(AppDelegateTest, TheTitleCountsWhatIsOpen) {
    launch();
    EXPECT_EQ(statusItem.title, "");
    const TodoItem task = Task("one");
    store->add(task);
    EXPECT_EQ(statusItem.title, " 1");
    store->add(Task("two"));
    EXPECT_EQ(statusItem.title, " 2");
    store->toggle(task.id);
    EXPECT_EQ(statusItem.title, " 1");
    store->clearCompleted();
    EXPECT_EQ(statusItem.title, " 1");
    store->remove(store->items()[0].id);
    EXPECT_EQ(statusItem.title, "");
}

TEST_F(AppDelegateTest, ALeftClickTogglesThePopoverWhereItWasClicked) {
    launch();
    click(StatusItemClick::Button::left);
    click(StatusItemClick::Button::left);
    EXPECT_THAT(journal, ElementsAre("popover", "toggle popover", "popover", "toggle popover"));
    EXPECT_EQ(popover.lastAnchor, (ScreenPoint{30, 4}));
    EXPECT_EQ(popover.lastToken, "token");
}

TEST_F(AppDelegateTest, ARightClickOrOneWithControlShowsTheMenu) {
    launch();
    click(StatusItemClick::Button::right);
    click(StatusItemClick::Button::left, true);
    click(StatusItemClick::Button::left);
    EXPECT_THAT(journal, ElementsAre("menu", "menu", "popover", "toggle popover"));
    EXPECT_EQ(statusItem.place, (ScreenPoint{30, 4}));
    EXPECT_THAT(lines(statusItem.menu),
                ElementsAre("Quick Add…  Ctrl+N", "--", "Settings…  Ctrl+,", "Export…  Ctrl+E", "--",
                            "Check for Updates…", "--", "Quit Quillo  Ctrl+Q"));
}

TEST_F(AppDelegateTest, TheBarsOwnMenuBeginsWithTheWayToTheList) {
    launch();
    const auto menu = statusItem.maker();
    EXPECT_THAT(lines(menu),
                ElementsAre("Open Quillo", "--", "Quick Add…  Ctrl+N", "--", "Settings…  Ctrl+,",
                            "Export…  Ctrl+E", "--", "Check for Updates…", "--", "Quit Quillo  Ctrl+Q"));
    choose(menu, "Open Quillo");
    EXPECT_THAT(journal, ElementsAre("popover", "show popover"));
}

TEST_F(AppDelegateTest, TheMenuDoesWhatItSays) {
    launch();
    const auto menu = statusItem.maker();
    choose(menu, "Quick Add…");
    choose(menu, "Quick Add…"); // Always shows, never hides.
    choose(menu, "Settings…");
    choose(menu, "Check for Updates…");
    choose(menu, "Quit Quillo");
    EXPECT_THAT(journal,
                ElementsAre("show quick add", "show quick add", "settings ", "check for updates", "quit"));
}

TEST_F(AppDelegateTest, ExportAsksForTheFormAtThePointer) {
    launch();
    choose(statusItem.maker(), "Export…");
    EXPECT_THAT(lines(statusItem.menu), ElementsAre("Export as Markdown", "Export as JSON"));
    EXPECT_EQ(statusItem.place, std::nullopt);
    choose(statusItem.menu, "Export as Markdown");
    choose(statusItem.menu, "Export as JSON");
    EXPECT_THAT(journal, ElementsAre("menu", "Markdown", "JSON"));
}

TEST_F(AppDelegateTest, BeforeTheListIsThereOnlyQuittingWorks) {
    make();
    delegate->showStatusItem();
    journal.clear();
    click(StatusItemClick::Button::left);
    EXPECT_FALSE(delegate->show(control::Show::Window::popover, ""));
    EXPECT_THAT(journal, IsEmpty());
    for (const MenuItem& item : statusItem.maker())
        EXPECT_EQ(static_cast<bool>(item.action), item.title == "Quit Quillo") << item.title;
}

TEST_F(AppDelegateTest, AClickBeforeTheListIsThereOpensThePopoverWhenItIs) {
    make();
    delegate->showStatusItem();
    click(StatusItemClick::Button::left);
    delegate->finishLaunching();
    EXPECT_EQ(journal.back(), "show popover");
    EXPECT_EQ(popover.lastAnchor, (ScreenPoint{30, 4}));
    EXPECT_EQ(popover.lastToken, "token");
}

TEST_F(AppDelegateTest, ASecondClickBeforeTheListIsThereTakesTheFirstBack) {
    make();
    delegate->showStatusItem();
    click(StatusItemClick::Button::left);
    click(StatusItemClick::Button::left);
    delegate->finishLaunching();
    EXPECT_EQ(journal.back(), "language model");
}

TEST_F(AppDelegateTest, TheShortcutOpensThePanelAndDismissesIt) {
    launch();
    hotKeyCenter.activationToken = "from the key";
    hotKeyCenter.press();
    mainExecutor.run();
    EXPECT_THAT(journal, ElementsAre("show quick add"));
    EXPECT_EQ(quickAdd.lastToken, "from the key");
    hotKeyCenter.press();
    mainExecutor.run();
    hotKeyCenter.press();
    mainExecutor.run();
    EXPECT_THAT(journal, ElementsAre("show quick add", "hide quick add", "show quick add"));
}

TEST_F(AppDelegateTest, AsksForWindowsByName) {
    launch();
    EXPECT_TRUE(delegate->show(control::Show::Window::popover, "token"));
    EXPECT_TRUE(delegate->show(control::Show::Window::quickAdd, "token"));
    EXPECT_TRUE(delegate->show(control::Show::Window::statistics, "first"));
    EXPECT_TRUE(delegate->show(control::Show::Window::settings, "second"));
    EXPECT_THAT(journal, ElementsAre("popover", "show popover", "show quick add", "statistics first",
                                     "settings second"));
    EXPECT_EQ(popover.lastAnchor, std::nullopt);
}

} // namespace
} // namespace quillo
