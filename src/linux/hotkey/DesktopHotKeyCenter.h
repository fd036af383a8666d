/// Shortcuts that work everywhere, in whichever way this desktop offers them.
#pragma once

#include "linux/hotkey/ShortcutBinding.h"
#include "ports/HotKeyCenter.h"

#include <QString>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillo {

/// Has one shortcut at a time: a second one is unavailable until the first is unregistered. Where a shortcut
/// cannot be had, one line in the log says why.
class DesktopHotKeyCenter final : public HotKeyCenter {
public:
    struct Way {
        std::unique_ptr<ShortcutBinding> binding;
        std::string drawback; ///< what this way cannot do, for the log; may be empty
    };

    /// The ways of this session. On Wayland the portal's comes first, as X11 grabs work there only while an
    /// X11 program has the keyboard; elsewhere the X server's does. `description` is PortalShortcutBinding's.
    static std::vector<Way> waysOfThisSession(const QString& description);

    /// Tries the ways in their order, until one has the shortcut, or finds that another program has it.
    explicit DesktopHotKeyCenter(std::vector<Way> ways);

    HandlerReference installHandler(Handler handler) override;
    void removeHandler(HandlerReference reference) override;
    HotKeyReference registerHotKey(const HotKeyConfig& config, const HotKeyIdentifier& identifier,
                                   Answer answer) override;
    void unregisterHotKey(HotKeyReference reference) override;
    const Observable<std::optional<DesktopKeys>>& desktopKeys() const override { return desktopKeys_; }
    void configure() override;

private:
    struct Registration {
        HotKeyReference reference;
        HotKeyConfig config;
        HotKeyIdentifier identifier;
        Answer answer;
        std::size_t way = 0; ///< that is tried, or has it
        std::string reasons; ///< why those before did not
    };

    void tryWay();
    void handleOutcome(const BindingOutcome& outcome);
    void handlePress(const std::string& activationToken);
    void updateDesktopKeys();

    const std::vector<Way> ways_;
    std::vector<Connection> connections_;
    std::map<HandlerReference, Handler> handlers_;
    std::optional<Registration> registration_;
    Observable<std::optional<DesktopKeys>> desktopKeys_;
    std::uint64_t lastReference_ = 0;
};

} // namespace quillo
