#include "ui/recorder/HotKeyRecorder.h"

#include "base/ManualExecutor.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingHotKeyCenter.h"

#include <gtest/gtest.h>

#include <optional>

namespace quillo {
namespace {

/// As the first keyboard at hand has them.
constexpr quint32 escapePlace = 9, tPlace = 28, kPlace = 45, unknownPlace = 200;

std::optional<std::uint32_t> keyCode(std::uint32_t place) {
    switch (place) {
    case escapePlace:
        return 53;
    case tPlace:
        return 17;
    case kPlace:
        return 40;
    default:
        return std::nullopt;
    }
}

class HotKeyRecorderTest : public testing::Test {
protected:
    HotKeyRecorderTest() {
        hotKeys.registerHotKey(hotKeys.current().get());
        QObject::connect(&recorder, &HotKeyRecorder::recordingChanged, &recorder,
                         [this] { ++recordingChanges; });
        QObject::connect(&recorder, &HotKeyRecorder::shortcutChanged, &recorder,
                         [this] { ++shortcutChanges; });
    }

    std::optional<HotKeyConfig> registered() const {
        EXPECT_LE(center.registrations.size(), 1U);
        return center.registrations.empty() ? std::nullopt
                                            : std::optional(center.registrations.begin()->second.config);
    }

    support::InMemoryPreferences preferences;
    support::RecordingHotKeyCenter center;
    ManualExecutor mainExecutor;
    HotKeyManager hotKeys{preferences, center, mainExecutor};
    int beeps = 0;
    HotKeyRecorder recorder{{hotKeys, center, keyCode, [this] { ++beeps; }}};
    int recordingChanges = 0;
    int shortcutChanges = 0;

    static constexpr HotKeyConfig shiftCommandK{40, 0x300};
    static constexpr int shiftCommand = Qt::ShiftModifier | Qt::MetaModifier;
};

TEST_F(HotKeyRecorderTest, ShowsTheShortcut) {
    EXPECT_EQ(recorder.shortcut(), QStringLiteral("⌃⌥⌘T"));
    EXPECT_FALSE(recorder.restorable());
    EXPECT_FALSE(recorder.recording());
}

TEST_F(HotKeyRecorderTest, CapturesTheNextCombination) {
    recorder.press();
    EXPECT_TRUE(recorder.recording());
    recorder.handleKey(Qt::Key_K, kPlace, shiftCommand);
    EXPECT_FALSE(recorder.recording());
    EXPECT_EQ(recorder.shortcut(), QStringLiteral("⇧⌘K"));
    EXPECT_EQ(registered(), shiftCommandK);
    EXPECT_EQ(hotKeys.load(), shiftCommandK);
    EXPECT_TRUE(recorder.restorable());
    EXPECT_EQ(recordingChanges, 2);
    EXPECT_EQ(shortcutChanges, 1);
    EXPECT_EQ(beeps, 0);
}

TEST_F(HotKeyRecorderTest, TheShortcutItselfIsFreeWhileRecording) {
    recorder.press();
    EXPECT_EQ(registered(), std::nullopt);
    recorder.handleKey(Qt::Key_T, tPlace, Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    EXPECT_EQ(registered(), HotKeyConfig());
}

TEST_F(HotKeyRecorderTest, AClickAndEscapeStopWithoutAChange) {
    recorder.press();
    recorder.press();
    EXPECT_FALSE(recorder.recording());
    EXPECT_EQ(registered(), HotKeyConfig());
    for (const quint32 place : {escapePlace, unknownPlace}) {
        recorder.press();
        recorder.handleKey(Qt::Key_Escape, place, shiftCommand);
        EXPECT_FALSE(recorder.recording());
        EXPECT_EQ(registered(), HotKeyConfig());
    }
    EXPECT_EQ(shortcutChanges, 0);
    EXPECT_EQ(hotKeys.load(), std::nullopt);
}

TEST_F(HotKeyRecorderTest, ABareKeyAndOneWithoutACodeBeep) {
    recorder.press();
    recorder.handleKey(Qt::Key_T, tPlace, Qt::NoModifier);
    EXPECT_EQ(beeps, 1);
    recorder.handleKey(Qt::Key_T, tPlace, Qt::KeypadModifier | Qt::GroupSwitchModifier);
    EXPECT_EQ(beeps, 2);
    recorder.handleKey(Qt::Key_VolumeUp, unknownPlace, Qt::ControlModifier);
    EXPECT_EQ(beeps, 3);
    EXPECT_TRUE(recorder.recording());
    EXPECT_EQ(hotKeys.load(), std::nullopt);
}

TEST_F(HotKeyRecorderTest, ModifiersAreWaitedForInSilence) {
    recorder.press();
    for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Super_L, Qt::Key_Meta})
        recorder.handleKey(key, unknownPlace, Qt::NoModifier);
    EXPECT_EQ(beeps, 0);
    EXPECT_TRUE(recorder.recording());
}

TEST_F(HotKeyRecorderTest, ShiftAloneIsAModifier) {
    recorder.press();
    recorder.handleKey(Qt::Key_T, tPlace, Qt::ShiftModifier);
    EXPECT_EQ(registered(), (HotKeyConfig{17, 0x200}));
}

TEST_F(HotKeyRecorderTest, KeysDoNothingWhileItDoesNotRecord) {
    recorder.handleKey(Qt::Key_K, kPlace, shiftCommand);
    recorder.handleKey(Qt::Key_T, tPlace, Qt::NoModifier);
    recorder.stop();
    EXPECT_EQ(registered(), HotKeyConfig());
    EXPECT_EQ(beeps + recordingChanges + shortcutChanges + center.unregistrations, 0);
}

TEST_F(HotKeyRecorderTest, RestoresTheDefault) {
    hotKeys.apply(shiftCommandK);
    recorder.restoreDefault();
    EXPECT_EQ(registered(), HotKeyConfig());
    EXPECT_EQ(hotKeys.load(), HotKeyConfig());
    EXPECT_FALSE(recorder.restorable());
    EXPECT_EQ(recorder.shortcut(), QStringLiteral("⌃⌥⌘T"));
}

TEST_F(HotKeyRecorderTest, RestoringTheDefaultEndsRecording) {
    hotKeys.apply(shiftCommandK);
    recorder.press();
    recorder.restoreDefault();
    EXPECT_FALSE(recorder.recording());
    EXPECT_EQ(registered(), HotKeyConfig());
}

TEST_F(HotKeyRecorderTest, ShowsWhatTheDesktopReports) {
    center.keysOfTheDesktop.set(DesktopKeys{"Strg+Alt+T", false});
    EXPECT_EQ(shortcutChanges, 1);
    EXPECT_EQ(recorder.shortcut(), QStringLiteral("Strg+Alt+T"));
    center.keysOfTheDesktop.set(DesktopKeys{"", false});
    EXPECT_EQ(recorder.shortcut(), QStringLiteral("⌃⌥⌘T"));
    recorder.press();
    EXPECT_TRUE(recorder.recording());
}

TEST_F(HotKeyRecorderTest, LeadsToTheDesktopsOwnDialogWhereThereIsOne) {
    hotKeys.apply(shiftCommandK);
    center.keysOfTheDesktop.set(DesktopKeys{"Strg+Alt+T", true});
    EXPECT_TRUE(recorder.configuredElsewhere());
    EXPECT_FALSE(recorder.restorable());
    recorder.press();
    EXPECT_EQ(center.configurations, 1);
    EXPECT_FALSE(recorder.recording());
    EXPECT_EQ(registered(), shiftCommandK);
}

} // namespace
} // namespace quillo
