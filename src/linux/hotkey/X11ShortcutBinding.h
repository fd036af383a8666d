/// The shortcut as a grabbed key of an X server.
#pragma once

#include "linux/hotkey/ShortcutBinding.h"

#include <QSocketNotifier>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

struct xcb_connection_t;

namespace quillo {

/// Grabs the key on the default screen of the display that DISPLAY names, over a connection of its own.
///
/// A grab is for exact modifiers, of which Caps Lock and Num Lock are two; so there are up to four grabs a
/// shortcut. Which bit stands for which modifier is the keyboard map's business, and may change at any time.
/// The X server is asked and waited for, as every window of ours waits for it too.
class X11ShortcutBinding final : public ShortcutBinding {
public:
    X11ShortcutBinding();
    ~X11ShortcutBinding() override;

    X11ShortcutBinding(const X11ShortcutBinding&) = delete;
    X11ShortcutBinding& operator=(const X11ShortcutBinding&) = delete;

    void bind(const HotKeyConfig& config, std::function<void(const BindingOutcome&)> answer) override;
    void release() override;

private:
    /// The bits of the modifiers that the keyboard map places; 0 for one that the keyboard lacks.
    struct Modifiers {
        std::uint16_t alt = 0;
        std::uint16_t super = 0;
        std::uint16_t numLock = 0;

        friend bool operator==(const Modifiers&, const Modifiers&) = default;
    };

    /// A place on the keyboard, and the modifiers with which it is grabbed, each combination a grab.
    struct Grab {
        std::uint8_t keycode = 0;
        std::vector<std::uint16_t> modifiers;
    };

    bool connect();
    void disconnect();
    BindingOutcome grab();
    void ungrab();
    std::optional<Modifiers> readModifiers();
    void read();
    void readSoon();
    void followKeyboard();

    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    std::unique_ptr<QSocketNotifier> readable_;
    std::uint32_t root_ = 0;
    Modifiers modifiers_;                ///< as they were when the key was grabbed
    std::optional<HotKeyConfig> wanted_; ///< what was asked for and not refused
    std::optional<Grab> grab_;
    std::pair<std::uint8_t, std::uint32_t> lastRelease_; ///< which key, and when
};

} // namespace quillo
