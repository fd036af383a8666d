#include "ui/quickadd/QuickAddController.h"

#include "support/SettableAppearance.h"
#include "ui/theme/Theme.h"
#include "ui/windows/MakeWindow.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

namespace quillo {
namespace {

class QuickAddControllerTest : public testing::Test {
protected:
    QuickAddControllerTest() { Theme::setInstance(&theme); }
    ~QuickAddControllerTest() override { Theme::setInstance(nullptr); }

    QQmlEngine& makeEngine() {
        if (!engine) {
            engine = std::make_unique<QQmlEngine>();
            prepareEngine(*engine);
            QObject::connect(engine.get(), &QQmlEngine::warnings, [this](const QList<QQmlError>& list) {
                for (const QQmlError& error : list)
                    warnings.push_back(error.toString().toStdString());
            });
        }
        return *engine;
    }

    QQuickWindow* panel() const {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        return windows.size() == 1 ? qobject_cast<QQuickWindow*>(windows.front()) : nullptr;
    }

    void show() {
        controller.show();
        QCoreApplication::processEvents();
        ASSERT_NE(panel(), nullptr);
        ASSERT_NE(field(), nullptr);
    }

    /// Soon after it was shown it waits a little for the keyboard to come back.
    bool hides() const {
        return QTest::qWaitFor([this] { return !controller.isVisible(); });
    }

    QQuickItem* field() const { return panel()->activeFocusItem(); }
    std::string text() const { return field()->property("text").toString().toStdString(); }

    void press(int key, const QString& typed = {}) {
        QQuickWindow* target = panel();
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, typed);
        QCoreApplication::sendEvent(target, &down);
        QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, typed);
        QCoreApplication::sendEvent(target, &up);
    }

    void type(const QString& typed) {
        for (const QChar each : typed)
            press(Qt::Key_unknown, each);
    }

    QQuickItem* named(const char* name, QAccessible::Role role) {
        return search(panel()->contentItem(), QString::fromUtf8(name), role);
    }

    static QQuickItem* search(QQuickItem* item, const QString& name, QAccessible::Role role) {
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(item);
        if (accessible != nullptr && accessible->role() == role &&
            accessible->text(QAccessible::Name) == name)
            return item;
        for (QQuickItem* child : item->childItems()) {
            if (QQuickItem* found = search(child, name, role))
                return found;
        }
        return nullptr;
    }

    support::SettableAppearance settings;
    Theme theme{settings};
    std::unique_ptr<QQmlEngine> engine;
    std::vector<std::string> warnings;
    std::vector<std::string> submitted;
    std::vector<const QWindow*> prepared;
    QuickAddController controller{[this]() -> QQmlEngine& { return makeEngine(); },
                                  [this](std::string each) { submitted.push_back(std::move(each)); },
                                  [this](QWindow& window) { prepared.push_back(&window); }};
};

TEST_F(QuickAddControllerTest, MakesNothingBeforeItIsShown) {
    EXPECT_FALSE(controller.isVisible());
    controller.hide();
    EXPECT_EQ(engine, nullptr);
    EXPECT_TRUE(QGuiApplication::topLevelWindows().isEmpty());
}

TEST_F(QuickAddControllerTest, ShowsTheSamePanelEveryTimeWithAnEmptyField) {
    show();
    QQuickWindow* first = panel();
    EXPECT_TRUE(controller.isVisible());
    type(QStringLiteral("left over"));
    EXPECT_EQ(text(), "left over");

    show(); // while it is shown
    EXPECT_EQ(panel(), first);
    EXPECT_EQ(text(), "");
    type(QStringLiteral("again"));
    controller.hide();
    EXPECT_FALSE(controller.isVisible());
    show();
    EXPECT_EQ(panel(), first);
    EXPECT_EQ(text(), "");
    EXPECT_EQ(prepared.size(), 3U);
    EXPECT_TRUE(warnings.empty()) << warnings.front();
}

TEST_F(QuickAddControllerTest, ReturnAddsOnceAndHides) {
    show();
    type(QStringLiteral(" Email Sam in 2 hours "));
    const QQuickItem* input = field();
    press(Qt::Key_Return);
    EXPECT_EQ(input->property("text").toString(), QString());
    EXPECT_TRUE(input->property("readOnly").toBool());
    press(Qt::Key_Return);
    press(Qt::Key_Enter);
    EXPECT_EQ(submitted, std::vector<std::string>{"Email Sam in 2 hours"});
    EXPECT_FALSE(controller.isVisible());
    show();
    EXPECT_EQ(text(), "");
    type(QStringLiteral("Next"));
    press(Qt::Key_Enter);
    EXPECT_EQ(submitted.back(), "Next");
}

TEST_F(QuickAddControllerTest, ReturnOnBlanksHidesAndAddsNothing) {
    show();
    type(QStringLiteral("   "));
    press(Qt::Key_Return);
    EXPECT_TRUE(submitted.empty());
    EXPECT_FALSE(controller.isVisible());
}

TEST_F(QuickAddControllerTest, EscapeHidesAndAddsNothing) {
    show();
    type(QStringLiteral("Buy milk"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(submitted.empty());
    EXPECT_FALSE(controller.isVisible());
}

TEST_F(QuickAddControllerTest, LosingTheKeyboardHides) {
    show();
    QWindow other;
    other.show();
    other.requestActivate();
    QCoreApplication::processEvents();
    ASSERT_EQ(QGuiApplication::focusWindow(), &other);
    EXPECT_TRUE(hides());
}

TEST_F(QuickAddControllerTest, ItsMenuTakesTheKeyboardWithoutHidingIt) {
    settings.value.set({false, false, true, false, std::nullopt}); // What closes has closed at once.
    show();
    type(QStringLiteral("milk"));
    QQuickWindow* owner = panel();
    press(Qt::Key_Menu);
    QCoreApplication::processEvents();
    auto* menu = qobject_cast<QQuickWindow*>(QGuiApplication::focusWindow());
    ASSERT_NE(menu, nullptr);
    ASSERT_NE(menu, owner);
    EXPECT_EQ(menu->transientParent(), owner);
    EXPECT_TRUE(controller.isVisible());
    ASSERT_NE(menu->activeFocusItem(), nullptr);

    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(menu, &enter);
    QKeyEvent released(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(menu, &released);
    QCoreApplication::processEvents();
    EXPECT_FALSE(menu->isVisible());
    EXPECT_EQ(QGuiApplication::focusWindow(), owner);
    EXPECT_TRUE(controller.isVisible());
    EXPECT_EQ(owner->activeFocusItem()->property("text").toString(), QString());
    EXPECT_TRUE(warnings.empty()) << warnings.front();
}

TEST_F(QuickAddControllerTest, LeavingItsMenuForAnotherProgramHidesBoth) {
    settings.value.set({false, false, true, false, std::nullopt}); // What closes has closed at once.
    show();
    press(Qt::Key_Menu);
    QCoreApplication::processEvents();
    QWindow* menu = QGuiApplication::focusWindow();
    ASSERT_TRUE(controller.isVisible());
    QWindow other;
    other.show();
    other.requestActivate();
    QCoreApplication::processEvents();
    EXPECT_EQ(QGuiApplication::focusWindow(), &other);
    EXPECT_TRUE(hides());
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(QuickAddControllerTest, StaysWhileAWindowManagerHasTheKeyboardToMoveIt) {
    show();
    const QPointF badge(50, panel()->height() / 2.0);
    QMouseEvent press(QEvent::MouseButtonPress, badge, panel()->mapToGlobal(badge), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(panel(), &press);
    QWindow other;
    other.show();
    other.requestActivate();
    QCoreApplication::processEvents();
    ASSERT_EQ(QGuiApplication::focusWindow(), &other);
    EXPECT_TRUE(controller.isVisible());
}

TEST_F(QuickAddControllerTest, TheReturnThatEndsACompositionDoesNotSubmit) {
    show();
    QInputMethodEvent composing(QStringLiteral("にほん"), {});
    QCoreApplication::sendEvent(field(), &composing);
    press(Qt::Key_Return);
    EXPECT_TRUE(submitted.empty());
    EXPECT_TRUE(controller.isVisible());
    QInputMethodEvent committed;
    committed.setCommitString(QStringLiteral("日本"));
    QCoreApplication::sendEvent(field(), &committed);
    press(Qt::Key_Return);
    EXPECT_EQ(submitted, std::vector<std::string>{"日本"});
}

TEST_F(QuickAddControllerTest, TakesTenThousandCharacters) {
    show();
    QInputMethodEvent pasted;
    pasted.setCommitString(QString(12000, QLatin1Char('x')));
    QCoreApplication::sendEvent(field(), &pasted);
    press(Qt::Key_Return);
    ASSERT_EQ(submitted.size(), 1U);
    EXPECT_EQ(submitted.front().size(), 10000U);
}

TEST_F(QuickAddControllerTest, TheKeyCapIsThereOnlyWhileThereIsText) {
    show();
    QQuickItem* cap = named("⏎", QAccessible::StaticText);
    ASSERT_NE(cap, nullptr);
    EXPECT_FALSE(cap->isVisible());
    type(QStringLiteral("x"));
    EXPECT_TRUE(cap->isVisible());
    press(Qt::Key_Backspace);
    EXPECT_FALSE(cap->isVisible());
}

TEST_F(QuickAddControllerTest, TellsWhatItIsForThoseWhoCannotSeeIt) {
    show();
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(field());
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::EditableText);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("New task"));
    EXPECT_EQ(accessible->text(QAccessible::Description),
              QStringLiteral("Press Return to add. Press Escape to cancel."));
}

TEST_F(QuickAddControllerTest, IsSixHundredBySeventyTwo) {
    show();
    settings.value.set({false, false, false, true, std::nullopt});
    EXPECT_EQ(panel()->size(), QSize(600, 72));
    settings.value.set({});
    EXPECT_EQ(panel()->size(), QSize(640, 112)); // with its shadow
}

TEST_F(QuickAddControllerTest, HandsATokenOnForTheKeyboard) {
    controller.show("token-1");
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-1");
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

} // namespace
} // namespace quillo
