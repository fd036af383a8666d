// Every window in every language, and in one that nobody speaks: each text in marks, and longer than in
// English. It shows what is not translated, put together from pieces, or cut off.
#include "PopoverWorld.h"
#include "SyncWorld.h"
#include "support/ManualLoginItem.h"
#include "support/RecordingHotKeyCenter.h"
#include "support/ScriptedUpdater.h"
#include "support/SettableAppearance.h"
#include "ui/quickadd/QuickAddModel.h"
#include "ui/settings/SettingsModel.h"
#include "ui/stats/StatsModel.h"
#include "ui/theme/Theme.h"
#include "ui/updates/UpdateModel.h"
#include "ui/windows/MakeWindow.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTranslator>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::numberedId;
using support::Task;

constexpr QChar opening(0x27E6);
constexpr QChar closing(0x27E7);

/// What a user typed, which no language changes and which may be cut off.
const QString typed = QStringLiteral("Buy milk");

/// Marks each text and makes it longer, short ones most, as languages with long words do.
class MarkingTranslator final : public QTranslator {
public:
    QString translate(const char*, const char* text, const char*, int) const override {
        const QString english = QString::fromUtf8(text);
        const auto more = english.size() < 20 ? english.size() * 2 / 5 : english.size() * 3 / 10;
        return opening + english + QString(more, QLatin1Char('e')) + closing;
    }
    bool isEmpty() const override { return false; }
};

/// Whether it is one text in marks, texts inside it included.
bool isMarkedOnce(const QString& text) {
    int depth = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (text[index] == opening)
            ++depth;
        else if (text[index] == closing)
            --depth;
        if (depth == 0 && index + 1 < text.size())
            return false;
    }
    return depth == 0 && text.startsWith(opening);
}

/// Two letters in a row: more than a key or a unit.
bool hasWords(const QString& text) {
    for (qsizetype index = 1; index < text.size(); ++index) {
        if (text[index - 1].isLetter() && text[index].isLetter())
            return true;
    }
    return false;
}

class LanguagesTest : public testing::TestWithParam<const char*> {
protected:
    LanguagesTest() {
        settings.value.set({false, false, true, false, std::nullopt});
        Theme::setInstance(&theme);
        prepareEngine(engine);
        if (marking()) {
            translator = std::make_unique<MarkingTranslator>();
        } else {
            translator = std::make_unique<QTranslator>();
            EXPECT_TRUE(translator->load(QLatin1String("quillo_") + QLatin1String(GetParam()),
                                         QStringLiteral(QUILLO_CATALOGUES)));
        }
        QCoreApplication::installTranslator(translator.get());
    }
    ~LanguagesTest() override {
        window.reset();
        QCoreApplication::removeTranslator(translator.get());
        Theme::setInstance(nullptr);
    }

    static bool marking() { return std::string(GetParam()) == "marks"; }

    void show(const char* file, QObject* model) {
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Quillo/") + QLatin1String(file)));
        window.reset(qobject_cast<QQuickWindow*>(
            component.createWithInitialProperties({{QStringLiteral("model"), QVariant::fromValue(model)}})));
        ASSERT_TRUE(window) << component.errorString().toStdString();
        window->show();
        window->requestActivate();
        settle();
    }

    void press(int key, Qt::KeyboardModifiers held = Qt::NoModifier) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, held);
            QCoreApplication::sendEvent(window.get(), &event);
        }
        settle();
    }

    static void settle() {
        QElapsedTimer waiting;
        waiting.start();
        while (!waiting.hasExpired(60))
            QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
    }

    /// Looks at every text that is to be seen now.
    void look() {
        texts = 0;
        look(*window->contentItem(), QRectF(QPointF(), QSizeF(window->size())));
        EXPECT_GT(texts, 0);
        if (marking()) {
            EXPECT_TRUE(isMarkedOnce(window->title())) << window->title().toStdString();
        }
    }

    void look(QQuickItem& item, QRectF seen) {
        if (!item.isVisible() || item.opacity() == 0)
            return;
        const QRectF place = item.mapRectToScene(item.boundingRect());
        // What is scrolled may be out of sight, above or below.
        if (item.inherits("QQuickFlickable"))
            seen = QRectF(place.left(), -1e6, place.width(), 2e6);
        if (item.inherits("QQuickText"))
            lookAt(item, place, seen);
        for (QQuickItem* child : item.childItems())
            look(*child, seen);
    }

    void lookAt(const QQuickItem& item, const QRectF& place, const QRectF& seen) {
        const QString text = item.property("text").toString();
        if (text.isEmpty() || text.contains(typed))
            return;
        ++texts;
        if (marking() && hasWords(text) && !isDate(text)) {
            EXPECT_TRUE(isMarkedOnce(text)) << "not translated, or of several pieces: " << text.toStdString();
        }
        EXPECT_FALSE(item.property("truncated").toBool()) << "cut off: " << text.toStdString();
        EXPECT_LE(item.property("contentWidth").toReal(), item.width() + 1)
            << "too wide: " << text.toStdString();
        EXPECT_LE(item.property("contentHeight").toReal(), item.height() + 1)
            << "too high: " << text.toStdString();
        EXPECT_TRUE(seen.adjusted(-1, -1, 1, 1).contains(place))
            << "out of sight: " << text.toStdString() << ", to " << place.bottom() << " of "
            << window->height() << " " << window->minimumHeight();
    }

    /// Dates come from the system's own words; before them stands "Today, " or "Tomorrow, ".
    bool isDate(const QString& text) const {
        return text.contains(QStringLiteral("AM")) || text.contains(QStringLiteral("PM")) ||
               text.contains(QStringLiteral("March")) || text.contains(QStringLiteral("2025")) ||
               text.size() <= 2;
    }

    void showPopover() {
        popover = std::make_unique<PopoverModel>(world.popover());
        show("PopoverWindow.qml", popover.get());
    }

    support::SettableAppearance settings;
    Theme theme{settings};
    support::PopoverWorld world;
    support::ManualLoginItem loginItem;
    support::RecordingHotKeyCenter hotKeyCenter;
    HotKeyManager hotKeys{world.preferences, hotKeyCenter, world.mainExecutor};
    support::ScriptedUpdater updater;
    std::unique_ptr<QTranslator> translator;
    std::unique_ptr<PopoverModel> popover;
    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
    int texts = 0;
};

TEST_P(LanguagesTest, ThePopoverWithoutTasks) {
    showPopover();
    look();
}

TEST_P(LanguagesTest, ThePopoverWithTasks) {
    const Instant now = world.clock.now();
    world.add({Task(typed.toStdString()).id(numberedId(1)).due(now + 3600),
               Task(typed.toStdString()).id(numberedId(2)).due(now + 86400),
               Task(typed.toStdString()).id(numberedId(3)).due(now + 40.0 * 86400),
               Task(typed.toStdString()).id(numberedId(4)).due(now + -86400.0),
               Task(typed.toStdString()).id(numberedId(5)).done()});
    showPopover();
    popover->setShowCompleted(true);
    settle();
    look();
}

TEST_P(LanguagesTest, TheMenus) {
    world.add({Task(typed.toStdString()).id(numberedId(1)), Task(typed.toStdString()).done()});
    showPopover();
    press(Qt::Key_Menu); // of the entry field
    look();
    press(Qt::Key_Escape);
    press(Qt::Key_Backtab, Qt::ShiftModifier); // to the options
    press(Qt::Key_Space);
    look();
    press(Qt::Key_Escape);
    press(Qt::Key_Tab);
    press(Qt::Key_Down); // to the task
    press(Qt::Key_Menu);
    look();
}

TEST_P(LanguagesTest, TheReminderCard) {
    world.add({Task(typed.toStdString()).id(numberedId(1)).due(world.clock.now() + 3600)});
    showPopover();
    press(Qt::Key_Down);
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    look();
    EXPECT_GT(texts, 10) << "the card is there";
}

TEST_P(LanguagesTest, TheSheets) {
    showPopover();
    popover->setFeedbackShown(true);
    settle();
    look();
    popover->setFeedbackShown(false);
    settle();
    popover->setCreditsShown(true);
    settle();
    look();
}

TEST_P(LanguagesTest, QuickAdd) {
    QuickAddModel model([](const std::string&) {});
    show("QuickAddPanel.qml", &model);
    model.begin();
    settle();
    look();
    window.reset();
}

TEST_P(LanguagesTest, Settings) {
    support::SyncWorld sync;
    SettingsModel model({
        .preferences = world.preferences,
        .store = world.store,
        .loginItem = loginItem,
        .recorder = {hotKeys, hotKeyCenter, [](std::uint32_t) { return std::nullopt; }, [] {}},
        .sync = sync.dependencies(),
        .statsStore = [this]() -> StatsStore& { return world.stats; },
        .actions = world.actions,
        .automaticallyChecksForUpdates = [] { return false; },
        .setAutomaticallyChecksForUpdates = [](bool) {},
        .openUrl = [](const std::string&) {},
    });
    show("SettingsWindow.qml", &model);
    look();
    model.recorder()->press();
    settle();
    look();
    window.reset();
}

TEST_P(LanguagesTest, SettingsOfSync) {
    support::SyncWorld sync;
    SyncModel model(sync.dependencies());
    const QString folder = QString::fromStdString(sync.newFolder("shared").string());
    QQmlComponent component(&engine);
    component.setData("import QtQuick; import Quillo; Window { required property SyncModel model; width: "
                      "448; title: qsTranslate(\"SettingsWindow\", \"Quillo Settings\"); "
                      "height: 548; SyncPage { anchors.fill: parent; model: parent.Window.window.model } }",
                      QUrl(QStringLiteral("qrc:/qt/qml/Quillo/Sheet.qml")));
    window.reset(qobject_cast<QQuickWindow*>(
        component.createWithInitialProperties({{QStringLiteral("model"), QVariant::fromValue(&model)}})));
    ASSERT_TRUE(window) << component.errorString().toStdString();
    window->show();
    settle();
    look();
    press(Qt::Key_Up); // To the server.
    look();
    model.use(SyncModel::Place::Folder, folder, {}, {});
    sync.until([&] { return !model.busy() && model.computers().size() == 1; });
    model.syncNow();
    sync.until([&] { return !model.busy(); });
    settle();
    look();
    window.reset();
}

TEST_P(LanguagesTest, StatisticsBeforeAnythingIsDone) {
    StatsModel model(world.stats);
    show("StatsWindow.qml", &model);
    look();
    window.reset();
}

TEST_P(LanguagesTest, StatisticsWithEveryAward) {
    world.preferences.set("Quillo.stats.lifetime", std::int64_t{998});
    StatsStore many({world.preferences, world.clock, world.calendar, world.notifications});
    StatsModel model(many);
    model.setActive(true);
    show("StatsWindow.qml", &model);
    for (int completion = 0; completion < 2; ++completion) {
        TodoItem item = Task(typed.toStdString());
        item.createdAt = world.clock.now() + -30.0;
        many.recordCompletion(item, world.clock.now());
    }
    settle();
    look();
    window.reset();
}

TEST_P(LanguagesTest, Updates) {
    UpdateModel model(updater, "1.0");
    model.check();
    show("UpdateWindow.qml", &model);
    look();
    const auto answer = [&](const Updater::CheckResult& result) {
        updater.answerCheck(result);
        settle();
        look();
        model.dismiss();
        model.check();
    };
    answer(UpToDate{});
    answer(UpdateOffer{
        .build = "2", .version = "2.0", .notes = "", .length = 9, .packageCommand = std::nullopt});
    answer(UpdateOffer{.build = "2", .version = "2.0", .notes = "", .length = 9, .packageCommand = ""});
    for (const UpdateFailure failure :
         {UpdateFailure::noFeed, UpdateFailure::unreachable, UpdateFailure::tooSlow, UpdateFailure::insecure,
          UpdateFailure::feedTooLarge, UpdateFailure::feedForged, UpdateFailure::feedUnreadable,
          UpdateFailure::feedOutdated, UpdateFailure::systemTooOld})
        answer(failure);
    updater.answerCheck(UpdateOffer{
        .build = "2", .version = "2.0", .notes = "", .length = 9'000'000, .packageCommand = std::nullopt});
    model.download();
    updater.tellProgress(1'000'000);
    settle();
    look();
    updater.answerDownload(UpdateFailure::archiveForged);
    settle();
    look();
    model.retry();
    updater.answerDownload(std::filesystem::path("/home/someone/quillo-2.0.tar.gz"));
    settle();
    look();
    window.reset();
}

INSTANTIATE_TEST_SUITE_P(Every, LanguagesTest, testing::Values("marks", "en", "de"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace
} // namespace quillo
