/// Records a new keyboard shortcut.
#pragma once

#include "base/Signal.h"
#include "hotkey/HotKeyManager.h"
#include "ports/HotKeyCenter.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace quillo {

/// What a HotKeyRecorder works with; all of it outlives the recorder.
struct HotKeyRecorderDependencies {
    HotKeyManager& hotKeys;
    HotKeyCenter& center;

    /// HotKeyConfig::keyCode of the key that a keyboard event names (QKeyEvent::nativeScanCode()); absent for
    /// keys that make no shortcut.
    std::function<std::optional<std::uint32_t>(std::uint32_t nativeScanCode)> keyCode;

    std::function<void()> beep;
};

/// Shows the shortcut and, once asked to, takes the next key combination as the new one. The shortcut itself
/// is given back meanwhile: else it would do its work in place of being recorded. Where the desktop decides
/// on the keys, and has a dialog for that, it shows what the desktop says and leads there in place of
/// recording.
///
/// Belongs to the main thread.
class HotKeyRecorder final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the shell.")

    Q_PROPERTY(bool recording READ recording NOTIFY recordingChanged)
    Q_PROPERTY(QString shortcut READ shortcut NOTIFY shortcutChanged)
    Q_PROPERTY(bool restorable READ restorable NOTIFY shortcutChanged)
    Q_PROPERTY(bool configuredElsewhere READ configuredElsewhere NOTIFY shortcutChanged)

public:
    explicit HotKeyRecorder(HotKeyRecorderDependencies dependencies);

    bool recording() const { return recording_; }

    /// As people read it, such as "⌃⌥⌘T".
    QString shortcut() const;

    /// Whether restoreDefault() would make another shortcut of it.
    bool restorable() const;

    /// The desktop has a dialog for the shortcut, which press() shows.
    bool configuredElsewhere() const;

    /// A click: starts recording, or stops it.
    Q_INVOKABLE void press();

    /// A key, named by its Qt::Key and its place, was pressed with these Qt::KeyboardModifiers. Nothing while
    /// not recording. Escape stops recording; a bare key, or one that makes no shortcut, beeps; modifiers are
    /// waited for in silence.
    Q_INVOKABLE void handleKey(int key, quint32 nativeScanCode, int modifiers);

    /// Stops recording, if it does; the shortcut stays what it was.
    Q_INVOKABLE void stop();

    Q_INVOKABLE void restoreDefault();

Q_SIGNALS:
    void recordingChanged();
    void shortcutChanged();

private:
    void setRecording(bool recording);
    void capture(const HotKeyConfig& config);

    const HotKeyRecorderDependencies with_;
    bool recording_ = false;
    std::vector<Connection> connections_;
};

} // namespace quillo
