#include "PopoverWorld.h"
#include "support/SettableAppearance.h"
#include "ui/theme/Theme.h"
#include "ui/windows/MakeWindow.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QClipboard>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::numberedId;
using support::Task;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

/// The popover's window, with the keyboard in the entry field.
class PopoverViewTest : public testing::Test {
protected:
    PopoverViewTest() {
        // Without motion: what closes has closed at once.
        settings.value.set({false, false, true, false, std::nullopt});
        Theme::setInstance(&theme);
        prepareEngine(engine);
        QObject::connect(&engine, &QQmlEngine::warnings, [this](const QList<QQmlError>& list) {
            for (const QQmlError& error : list)
                warnings.push_back(error.toString().toStdString());
        });
    }
    ~PopoverViewTest() override {
        window.reset();
        Theme::setInstance(nullptr);
    }

    void show() {
        model = std::make_unique<PopoverModel>(world.popover());
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Quillo/PopoverWindow.qml")));
        window.reset(qobject_cast<QQuickWindow*>(component.createWithInitialProperties(
            {{QStringLiteral("model"), QVariant::fromValue(model.get())}})));
        ASSERT_TRUE(window) << component.errorString().toStdString();
        window->show();
        window->requestActivate();
        QCoreApplication::processEvents();
        ASSERT_EQ(focused(), "New task");
    }

    void press(int key, Qt::KeyboardModifiers held = Qt::NoModifier, const QString& typed = {}) {
        QKeyEvent down(QEvent::KeyPress, key, held, typed);
        QCoreApplication::sendEvent(window.get(), &down);
        QKeyEvent up(QEvent::KeyRelease, key, held, typed);
        QCoreApplication::sendEvent(window.get(), &up);
        settle();
    }

    /// Lets what opens or closes do so: a transition that is switched off takes some turns, too.
    static void settle() {
        QElapsedTimer waiting;
        waiting.start();
        while (!waiting.hasExpired(settledMilliseconds))
            QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
    }
    static constexpr int settledMilliseconds = 40;

    void type(const QString& text) {
        for (const QChar each : text)
            press(Qt::Key_unknown, Qt::NoModifier, each);
    }

    void rightClick(const QQuickItem& item, const QPointF& place) {
        const QPointF spot = item.mapToScene(place);
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const Qt::MouseButtons buttons =
                type == QEvent::MouseButtonPress ? Qt::RightButton : Qt::NoButton;
            QMouseEvent event(type, spot, window->mapToGlobal(spot), Qt::RightButton, buttons,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(window.get(), &event);
        }
        settle();
    }

    QQuickItem& field() const { return *window->activeFocusItem(); }

    static std::string nameOf(QQuickItem* item) {
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(item);
        return accessible == nullptr ? "" : accessible->text(QAccessible::Name).toStdString();
    }

    std::string focused() const { return nameOf(window->activeFocusItem()); }

    /// The lines of the menu that is open, those in brackets that cannot be chosen.
    std::vector<std::string> menu() const {
        std::vector<std::string> lines;
        collect(window->contentItem(), lines);
        return lines;
    }

    static void collect(QQuickItem* item, std::vector<std::string>& lines) {
        if (item->inherits("QQuickMenuItem") && item->isVisible()) {
            const std::string text = item->property("text").toString().toStdString();
            lines.push_back(item->isEnabled() ? text : "(" + text + ")");
        }
        for (QQuickItem* child : item->childItems())
            collect(child, lines);
    }

    /// Where the key goes, step by step, until the keyboard is where it was.
    std::vector<std::string> wayRound(int key, Qt::KeyboardModifiers held) {
        const QQuickItem* start = window->activeFocusItem();
        std::vector<std::string> way;
        do {
            way.push_back(focused());
            press(key, held);
        } while (window->activeFocusItem() != start && way.size() < 30);
        return way;
    }

    support::SettableAppearance settings;
    Theme theme{settings};
    support::PopoverWorld world;
    std::unique_ptr<PopoverModel> model;
    QQmlEngine engine;
    std::vector<std::string> warnings;
    std::unique_ptr<QQuickWindow> window;
};

TEST_F(PopoverViewTest, TabGoesEveryWhereAndShiftTabTheSameWayBack) {
    world.add({Task("a").id(numberedId(1)), Task("b").id(numberedId(2)), Task("c").done()});
    show();
    std::vector<std::string> way = wayRound(Qt::Key_Tab, Qt::NoModifier);
    EXPECT_THAT(way, ElementsAre("New task", "a", "Set reminder for a", "Delete a", "Show completed tasks",
                                 "Olo, the Quillo mascot", "More options"));
    std::reverse(way.begin() + 1, way.end());
    EXPECT_EQ(wayRound(Qt::Key_Backtab, Qt::ShiftModifier), way);
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(PopoverViewTest, ShiftTabComesToTheButtonsOfTheRowThatWasLeft) {
    world.add({Task("a").id(numberedId(1)), Task("b").id(numberedId(2))});
    show();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    for (const char* next : {"Set reminder for b", "Delete b", "Olo, the Quillo mascot"}) {
        press(Qt::Key_Tab);
        EXPECT_EQ(focused(), next);
    }
    for (const char* next : {"Delete b", "Set reminder for b", "b", "New task"}) {
        press(Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(focused(), next);
    }
}

TEST_F(PopoverViewTest, AWheelGoesThreeRowsANotchAndStopsAtTheEnds) {
    for (int number = 1; number <= 100; ++number)
        world.add({Task("task").id(numberedId(number))});
    show();
    press(Qt::Key_Down);
    QQuickItem* row = window->activeFocusItem();
    QQuickItem* list = row->parentItem()->parentItem();
    press(Qt::Key_Up);
    const QPointF spot = list->mapToScene({50, 50});
    const auto turn = [&](int notches) {
        QWheelEvent event(spot, window->mapToGlobal(spot), {}, {0, -120 * notches}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window.get(), &event);
        return list->property("contentY").toDouble();
    };
    const double height = row->height();
    EXPECT_EQ(turn(1), 3 * height);
    EXPECT_EQ(turn(2), 9 * height);
    EXPECT_EQ(turn(-20), 0);
    const double last = turn(1000);
    EXPECT_NEAR(last, 100 * height - list->height(), height);
    EXPECT_EQ(turn(1), last);

    // The keyboard comes to what is seen.
    press(Qt::Key_Down);
    EXPECT_EQ(list->property("contentY").toDouble(), last);
    EXPECT_GT(list->property("currentIndex").toInt(), 80);
}

TEST_F(PopoverViewTest, FieldsHaveAMenu) {
    QGuiApplication::clipboard()->setText(QStringLiteral("pasted"));
    show();
    QQuickItem& entry = field();
    press(Qt::Key_Menu);
    EXPECT_THAT(menu(), ElementsAre("(Undo)", "(Cut)", "(Copy)", "Paste", "(Select All)"));
    press(Qt::Key_Escape);
    EXPECT_THAT(menu(), IsEmpty());
    EXPECT_EQ(window->activeFocusItem(), &entry);

    type(QStringLiteral("milk"));
    press(Qt::Key_Left, Qt::ShiftModifier);
    press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_THAT(menu(), ElementsAre("Undo", "Cut", "Copy", "Paste", "Select All"));
    for (int line = 0; line < 3; ++line) // from Undo to Paste
        press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_THAT(menu(), IsEmpty());
    EXPECT_EQ(window->activeFocusItem(), &entry);
    EXPECT_EQ(model->newItemText(), QStringLiteral("milpasted"));
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(PopoverViewTest, ARightClickInASelectionKeepsItAndElsewhereDoesNot) {
    show();
    type(QStringLiteral("milk"));
    QMetaObject::invokeMethod(&field(), "selectAll");
    QQuickItem& entry = field();
    rightClick(entry, {5, entry.height() / 2});
    EXPECT_THAT(menu(), Contains("Copy"));
    EXPECT_EQ(entry.property("selectedText").toString(), QStringLiteral("milk"));
    press(Qt::Key_Escape);
    EXPECT_EQ(entry.property("selectedText").toString(), QStringLiteral("milk"));
    QMetaObject::invokeMethod(&entry, "select", Q_ARG(int, 0), Q_ARG(int, 1));
    rightClick(entry, {entry.width() - 5, entry.height() / 2});
    EXPECT_THAT(menu(), Contains("(Copy)"));
    EXPECT_EQ(entry.property("cursorPosition").toInt(), 4);
}

TEST_F(PopoverViewTest, ATitleIsStillBeingEditedWhenItsMenuCloses) {
    world.add({Task("milk").id(numberedId(1))});
    show();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), "Edit");
    QQuickItem& editor = field();
    rightClick(editor, {5, editor.height() / 2});
    EXPECT_THAT(menu(), Contains("Select All"));
    press(Qt::Key_Escape);
    EXPECT_EQ(window->activeFocusItem(), &editor);
    type(QStringLiteral("bread"));
    press(Qt::Key_Return);
    EXPECT_EQ(world.task(numberedId(1)).title, "bread");
    EXPECT_EQ(focused(), "bread");
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(PopoverViewTest, IsMirroredForScriptsThatRunFromTheRight) {
    world.add({Task("اتصل بأمي").id(numberedId(1)).due({world.clock.now().unixSeconds() + 3600}),
               Task("שלום").id(numberedId(2)), Task("done one").done()});
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    show();
    const auto middle = [](const QQuickItem& item) { return item.mapToScene({item.width() / 2, 0}).x(); };
    const double half = window->width() / 2.0;
    press(Qt::Key_Down);
    const QQuickItem& row = field();
    press(Qt::Key_Tab);
    EXPECT_LT(middle(field()), half); // its bell
    press(Qt::Key_Tab);
    EXPECT_LT(middle(field()), half); // its bin
    press(Qt::Key_Tab);
    EXPECT_GT(middle(field()), half); // the way to the done tasks
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "More options");
    EXPECT_LT(middle(field()), half);
    EXPECT_EQ(middle(row), half);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(PopoverViewTest, NothingDoneCannotBeCleared) {
    show();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(focused(), "More options");
    press(Qt::Key_Space);
    EXPECT_THAT(menu(), ElementsAre("Quick Add… (⌃⌥⌘T)", "Export as Markdown…", "Export as JSON…",
                                    "(Clear Completed)", "Statistics…", "Settings…", "Check for Updates…",
                                    "Quit Quillo"));
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(PopoverViewTest, TheOptionsDoWhatTheySay) {
    std::vector<std::string> done;
    const auto note = [&done](const char* what) { return [&done, what] { done.emplace_back(what); }; };
    world.actions = {.quickAdd = note("quick add"),
                     .exportMarkdown = note("Markdown"),
                     .exportJson = note("JSON"),
                     .openStatistics = [&](const std::string&) { done.emplace_back("statistics"); },
                     .openSettings = [&](const std::string&) { done.emplace_back("settings"); },
                     .checkForUpdates = note("updates"),
                     .quit = note("quit")};
    show();
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    for (int line = 0; line < 7; ++line) {
        ASSERT_EQ(focused(), "More options");
        press(Qt::Key_Space);
        for (int step = 0; step < line; ++step)
            press(Qt::Key_Down);
        press(Qt::Key_Return);
    }
    EXPECT_THAT(done,
                ElementsAre("quick add", "Markdown", "JSON", "statistics", "settings", "updates", "quit"));
}

} // namespace
} // namespace quillo
