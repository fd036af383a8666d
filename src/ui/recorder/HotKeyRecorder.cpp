#include "ui/recorder/HotKeyRecorder.h"

#include "hotkey/DisplayString.h"
#include "hotkey/ModifierMask.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quillo {

namespace {

constexpr std::uint32_t escapeKeyCode = 53;

/// Keys that are held for others, or change what others do.
constexpr std::array modifierKeys = {
    Qt::Key_Shift,   Qt::Key_Control,  Qt::Key_Meta,       Qt::Key_Alt,     Qt::Key_AltGr,
    Qt::Key_Super_L, Qt::Key_Super_R,  Qt::Key_Hyper_L,    Qt::Key_Hyper_R, Qt::Key_Mode_switch,
    Qt::Key_NumLock, Qt::Key_CapsLock, Qt::Key_ScrollLock,
};

/// As modifierMask() takes them.
std::uint32_t flagsOf(Qt::KeyboardModifiers modifiers) {
    std::uint32_t flags = 0;
    if (modifiers & Qt::ControlModifier)
        flags |= modifier_flags::control;
    if (modifiers & Qt::AltModifier)
        flags |= modifier_flags::option;
    if (modifiers & Qt::ShiftModifier)
        flags |= modifier_flags::shift;
    if (modifiers & Qt::MetaModifier)
        flags |= modifier_flags::command;
    return flags;
}

} // namespace

HotKeyRecorder::HotKeyRecorder(HotKeyRecorderDependencies dependencies) : with_(std::move(dependencies)) {
    connections_.push_back(
        with_.hotKeys.current().observe([this](const HotKeyConfig&) { Q_EMIT shortcutChanged(); }));
    connections_.push_back(with_.center.desktopKeys().observe(
        [this](const std::optional<DesktopKeys>&) { Q_EMIT shortcutChanged(); }));
}

QString HotKeyRecorder::shortcut() const {
    const auto& keys = with_.center.desktopKeys().get();
    return QString::fromStdString(keys && !keys->description.empty()
                                      ? keys->description
                                      : displayString(with_.hotKeys.current().get()));
}

bool HotKeyRecorder::restorable() const {
    return !configuredElsewhere() && with_.hotKeys.current().get() != HotKeyConfig{};
}

bool HotKeyRecorder::configuredElsewhere() const {
    const auto& keys = with_.center.desktopKeys().get();
    return keys && keys->configurable;
}

void HotKeyRecorder::press() {
    if (recording_) {
        stop();
    } else if (configuredElsewhere()) {
        with_.center.configure();
    } else {
        with_.hotKeys.unregister();
        setRecording(true);
    }
}

void HotKeyRecorder::handleKey(int key, quint32 nativeScanCode, int modifiers) {
    if (!recording_ || std::find(modifierKeys.begin(), modifierKeys.end(), key) != modifierKeys.end())
        return;
    const auto keyCode = with_.keyCode(nativeScanCode);
    // By what it writes as well: some have moved it to another place.
    if (key == Qt::Key_Escape || keyCode == escapeKeyCode) {
        stop();
        return;
    }
    const std::uint32_t mask = modifierMask(flagsOf(Qt::KeyboardModifiers(modifiers)));
    if (mask == 0 || !keyCode)
        with_.beep();
    else
        capture({*keyCode, mask});
}

void HotKeyRecorder::stop() {
    if (!recording_)
        return;
    setRecording(false);
    with_.hotKeys.registerHotKey(with_.hotKeys.current().get());
}

void HotKeyRecorder::restoreDefault() {
    capture({});
}

void HotKeyRecorder::setRecording(bool recording) {
    if (std::exchange(recording_, recording) != recording)
        Q_EMIT recordingChanged();
}

void HotKeyRecorder::capture(const HotKeyConfig& config) {
    with_.hotKeys.apply(config);
    setRecording(false);
}

} // namespace quillo
