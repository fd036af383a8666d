/// In-memory twin of the shortcut port: other programs' shortcuts, and presses, are up to the test.
#pragma once

#include "ports/HotKeyCenter.h"

#include <cstdint>
#include <map>
#include <utility>

namespace quillo::support {

class RecordingHotKeyCenter : public HotKeyCenter {
public:
    struct Registration {
        HotKeyConfig config;
        HotKeyIdentifier identifier;

        friend bool operator==(const Registration&, const Registration&) = default;
    };

    HandlerReference installHandler(Handler handler) override {
        const HandlerReference reference{++last_};
        handlers.emplace(reference, std::move(handler));
        return reference;
    }

    void removeHandler(HandlerReference reference) override { handlers.erase(reference); }

    HotKeyReference registerHotKey(const HotKeyConfig& config, const HotKeyIdentifier& identifier,
                                   Answer answer) override {
        const HotKeyReference reference{++last_};
        waiting_.emplace(reference, std::pair{Registration{config, identifier}, std::move(answer)});
        if (!holding)
            answerAll();
        return reference;
    }

    void unregisterHotKey(HotKeyReference reference) override {
        ++unregistrations;
        waiting_.erase(reference);
        registrations.erase(reference);
    }

    const Observable<std::optional<DesktopKeys>>& desktopKeys() const override { return keysOfTheDesktop; }
    void configure() override { ++configurations; }

    /// Answers what waits for an answer.
    void answerAll() {
        for (auto& [reference, asked] : std::exchange(waiting_, {})) {
            if (status == HotKeyStatus::noError)
                registrations.emplace(reference, asked.first);
            asked.second(status);
        }
    }

    /// Presses what is registered: its event goes to every handler.
    void press() {
        for (const auto& [reference, registration] : registrations) {
            const HotKeyEvent event{registration.identifier, activationToken};
            for (const auto& [handlerReference, handler] : handlers)
                handler(&event);
        }
    }

    HotKeyStatus status = HotKeyStatus::noError; ///< what registering is answered with
    bool holding = false;                        ///< else every registration is answered at once
    std::string activationToken;                 ///< of the presses to come
    std::map<HandlerReference, Handler> handlers;
    std::map<HotKeyReference, Registration> registrations;
    Observable<std::optional<DesktopKeys>> keysOfTheDesktop;
    int unregistrations = 0;
    int configurations = 0;

private:
    std::uint64_t last_ = 0;
    std::map<HotKeyReference, std::pair<Registration, Answer>> waiting_;
};

} // namespace quillo::support
