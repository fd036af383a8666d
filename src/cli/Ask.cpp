#include "cli/Ask.h"

#include "base/DataFolder.h"
#include "cli/Session.h"
#include "cli/UnderstandText.h"
#include "control/Client.h"
#include "sqlite/PreferencesLock.h"
#include "unicode/SystemPlace.h"

#include <chrono>
#include <optional>
#include <thread>
#include <utility>
#include <variant>

namespace quillo::cli {

namespace {

/// What is about other computers waits for networks, and for the user who unlocks his keyring.
constexpr std::chrono::minutes patienceForPlaces{5};

std::chrono::milliseconds patienceFor(const control::Command& command) {
    const bool isAboutPlaces = std::holds_alternative<control::UseSync>(command) ||
                               std::holds_alternative<control::SyncNow>(command) ||
                               std::holds_alternative<control::ForgetDevice>(command);
    return isAboutPlaces ? patienceForPlaces : control::patience;
}

} // namespace

void ask(control::Command command, const std::function<void(const control::Answer&)>& tell) {
    using Clock = std::chrono::steady_clock;
    const auto folder = dataFolder();
    if (!folder)
        return tell(folder.error());
    const std::chrono::milliseconds patience = patienceFor(command);
    control::Request request{std::move(command), unicode::systemTimeZone(), unicode::systemLocale()};
    if (const std::optional<control::Answer> answer = control::ask(*folder, request, patience))
        return tell(*answer);
    const auto text = understandText(request);
    if (!text)
        return tell(text.error());
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(2);
    for (;;) {
        auto lock = PreferencesLock::tryAcquire(*folder);
        if (!lock)
            return tell(lock.error());
        if (*lock) {
            const auto session = Session::change(*folder, *std::move(*lock));
            return tell(session ? (*session)->answer(request, *text) : control::Answer(session.error()));
        }
        // Another command is at it, or a program that is just starting or ending.
        if (const std::optional<control::Answer> answer = control::ask(*folder, request, patience))
            return tell(*answer);
        if (Clock::now() >= deadline)
            return tell(PreferencesLock::heldByAnother(*folder));
        std::this_thread::sleep_for(PreferencesLock::interval);
    }
}

} // namespace quillo::cli
