#include "support/SettableAppearance.h"
#include "ui/theme/Theme.h"
#include "ui/windows/MakeWindow.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <memory>
#include <string>

namespace quillo {
namespace {

enum Phase { rest, crouch, airborne };

class MascotTest : public testing::Test {
protected:
    void SetUp() override {
        Theme::setInstance(&theme);
        prepareEngine(engine);
        window.resize(200, 200);
    }
    void TearDown() override {
        made.reset();
        Theme::setInstance(nullptr);
    }

    /// Puts the item into the window, which is shown, and gives it the keyboard.
    QQuickItem* show(const QString& text) {
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Quillo\n" + text.toUtf8(), QUrl());
        made.reset(qobject_cast<QQuickItem*>(component.create()));
        EXPECT_TRUE(made) << component.errorString().toStdString();
        if (!made)
            return nullptr;
        made->setParentItem(window.contentItem());
        window.show();
        made->forceActiveFocus();
        return made.get();
    }

    QQuickItem* showMascot(const QString& folder = QStringLiteral("qrc:/qt/qml/Quillo/mascot")) {
        return show(
            QStringLiteral(
                "MascotView { size: 100; folder: '%1'; property int secrets: 0;"
                " property string phases; onSecretTap: ++secrets; onHopPhaseChanged: phases += hopPhase }")
                .arg(folder));
    }

    void click() {
        const QPointF place = made->mapToScene({50, 50});
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, place, window.mapToGlobal(place), Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                              Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &event);
        }
    }

    void press(Qt::Key key, bool repeated = false) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier, QString(), repeated);
            QCoreApplication::sendEvent(&window, &event);
        }
    }

    /// Lets things happen until `done`, which is looked at every few milliseconds, or for this many of them.
    template <typename Condition>
    static bool until(Condition done, int longest = 2000) {
        QElapsedTimer waiting;
        waiting.start();
        while (!done()) {
            if (waiting.elapsed() > longest)
                return false;
            QEventLoop loop;
            QTimer::singleShot(2, Qt::PreciseTimer, &loop, &QEventLoop::quit);
            loop.exec();
        }
        return true;
    }

    /// The phases that were entered, a digit each.
    std::string phases() const { return made->property("phases").toString().toStdString(); }
    double offset() const { return made->property("hopOffset").toDouble(); }
    int phase() const { return made->property("hopPhase").toInt(); }
    int secrets() const { return made->property("secrets").toInt(); }

    /// The names of the pictures that are shown.
    QStringList pictures() const {
        QStringList names;
        const auto items = made->findChildren<QQuickItem*>();
        for (const QQuickItem* item : items)
            if (item->inherits("QQuickImage") && item->isVisible())
                names << item->property("source").toUrl().fileName();
        return names;
    }

    support::SettableAppearance settings;
    Theme theme{settings};
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> made;
};

TEST_F(MascotTest, AllPicturesAreThereAndOfOneSize) {
    for (const char* name : {"Olo", "Olo-Blink", "Olo-Crouch", "Olo-Airborne"}) {
        const QString file = QStringLiteral(":/qt/qml/Quillo/mascot/%1.svg").arg(QLatin1StringView(name));
        ASSERT_TRUE(QFile::exists(file)) << name;
        QSvgRenderer drawing(file);
        EXPECT_TRUE(drawing.isValid()) << name;
        EXPECT_EQ(drawing.viewBoxF(), QRectF(0, 0, 160, 160)) << name;
    }
}

TEST_F(MascotTest, HopsThroughItsPhases) {
    ASSERT_TRUE(showMascot());
    QElapsedTimer sinceTap;
    sinceTap.start();
    click();
    ASSERT_TRUE(until([&] { return phases() == "210"; }));
    EXPECT_GE(sinceTap.elapsed(), 380); // 220 in the air, 180 on the ground, less what a clock tick is worth
    ASSERT_TRUE(until([&] { return offset() == 0; }));
    EXPECT_EQ(secrets(), 0);
}

TEST_F(MascotTest, ATapWithinAHopBeginsItAnew) {
    ASSERT_TRUE(showMascot());
    click();
    ASSERT_TRUE(until([&] { return phase() != rest; }));
    click();
    ASSERT_TRUE(until([&] { return phase() == rest; }));
    EXPECT_EQ(phases().substr(phases().size() - 3), "210");
}

TEST_F(MascotTest, EveryPhaseHasItsPictureAndPlace) {
    ASSERT_TRUE(showMascot());
    EXPECT_EQ(pictures(), QStringList{QStringLiteral("Olo.svg")});
    struct Expected {
        Phase phase;
        const char* picture;
        double offset;
    };
    for (const auto& [phase, picture, place] :
         {Expected{airborne, "Olo-Airborne.svg", -22}, {crouch, "Olo-Crouch.svg", 4}, {rest, "Olo.svg", 0}}) {
        const double before = offset();
        QMetaObject::invokeMethod(made.get(), "enter", Q_ARG(QVariant, int(phase)));
        EXPECT_EQ(pictures(), QStringList{QString::fromLatin1(picture)});
        // A spring swings past its end, these by 13 % of the way at most.
        double farthest = 0;
        ASSERT_TRUE(until([&, place = place] {
            farthest = std::max(farthest, (offset() - place) / (place - before));
            return offset() == place;
        })) << picture;
        EXPECT_LT(farthest, 0.16) << picture;
    }
}

TEST_F(MascotTest, FiveTapsGiveTheSecretAway) {
    ASSERT_TRUE(showMascot());
    for (int i = 0; i < 4; ++i)
        click();
    EXPECT_EQ(secrets(), 0);
    click();
    EXPECT_EQ(secrets(), 1);
    EXPECT_TRUE(made->property("celebrating").toBool());
    click();
    EXPECT_EQ(secrets(), 1);
    EXPECT_TRUE(until([&] { return !made->property("celebrating").toBool(); }));
}

TEST_F(MascotTest, SpaceAndReturnTap) {
    ASSERT_TRUE(showMascot());
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        press(key);
    press(Qt::Key_Space, true);
    press(Qt::Key_A);
    EXPECT_EQ(secrets(), 0);
    press(Qt::Key_Return);
    EXPECT_EQ(secrets(), 1);
}

TEST_F(MascotTest, WithoutMotionOnlyTheSecretStays) {
    settings.value.set({false, false, true, false, std::nullopt});
    ASSERT_TRUE(showMascot());
    for (int i = 0; i < 5; ++i) {
        click();
        EXPECT_FALSE(until([&] { return phase() != rest; }, 50));
    }
    EXPECT_EQ(secrets(), 1);
    EXPECT_FALSE(made->property("breathing").toBool());
    EXPECT_FALSE(made->property("celebrating").toBool());
    EXPECT_EQ(offset(), 0);
}

TEST_F(MascotTest, MotionStopsWhenItIsNotWantedAnyLonger) {
    ASSERT_TRUE(showMascot());
    click();
    ASSERT_TRUE(until([&] { return phase() != rest; }));
    settings.value.set({false, false, true, false, std::nullopt});
    EXPECT_EQ(phase(), rest);
    EXPECT_TRUE(until([&] { return offset() == 0; }));
    EXPECT_FALSE(made->property("breathing").toBool());
}

TEST_F(MascotTest, BreathesOnlyWhileSeen) {
    ASSERT_TRUE(showMascot());
    EXPECT_TRUE(made->property("breathing").toBool());
    window.hide();
    EXPECT_FALSE(made->property("breathing").toBool());
    window.show();
    EXPECT_TRUE(made->property("breathing").toBool());
    made->setVisible(false);
    EXPECT_FALSE(made->property("breathing").toBool());
}

TEST_F(MascotTest, AMissingPictureIsReplacedByTheOneAtRest) {
    QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(QStringLiteral(":/qt/qml/Quillo/mascot/Olo.svg"),
                            folder.filePath(QStringLiteral("Olo.svg"))));
    ASSERT_TRUE(showMascot(QUrl::fromLocalFile(folder.path()).toString()));
    made->setProperty("blinking", true);
    EXPECT_EQ(pictures(), QStringList{QStringLiteral("Olo.svg")});
    for (const Phase phase : {airborne, crouch, rest}) {
        made->setProperty("hopPhase", int(phase));
        EXPECT_EQ(pictures(), QStringList{QStringLiteral("Olo.svg")});
    }
}

TEST_F(MascotTest, BlinksWithItsOwnPicture) {
    ASSERT_TRUE(showMascot());
    made->setProperty("blinking", true);
    EXPECT_EQ(pictures(), QStringList{QStringLiteral("Olo-Blink.svg")});
    EXPECT_TRUE(until([&] { return !made->property("blinking").toBool(); }));
    EXPECT_EQ(pictures(), QStringList{QStringLiteral("Olo.svg")});
}

TEST_F(MascotTest, SaysWhatItIs) {
    ASSERT_TRUE(showMascot());
    const QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(made.get());
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Olo, the Quillo mascot"));
    EXPECT_EQ(accessible->text(QAccessible::Description), QStringLiteral("Tap five times for a surprise."));
    EXPECT_EQ(accessible->role(), QAccessible::Button);
    EXPECT_EQ(accessible->childCount(), 0);
}

TEST_F(MascotTest, CreditsEndWithTheirButton) {
    ASSERT_TRUE(show(QStringLiteral("CreditsView { width: 360; height: 480; property int closed: 0;"
                                    " onClose: ++closed }")));
    press(Qt::Key_Return);
    EXPECT_EQ(made->property("closed").toInt(), 1);
}

TEST_F(MascotTest, AnIconIsASymbolInItsColour) {
    ASSERT_TRUE(show(QStringLiteral("Icon { symbol: 'plus'; size: 20; color: '#800a141e' }")));
    EXPECT_EQ(made->property("source").toUrl(), QUrl(QStringLiteral("image://symbol/plus/0a141e80")));
    EXPECT_EQ(made->property("status").toInt(), 1);
    EXPECT_EQ(made->width(), 20);
    made->setProperty("color", QColor(10, 20, 30));
    EXPECT_EQ(made->property("source").toUrl(), QUrl(QStringLiteral("image://symbol/plus/0a141eff")));
    made->setProperty("symbol", QString());
    EXPECT_EQ(made->property("status").toInt(), 0);
}

} // namespace
} // namespace quillo
