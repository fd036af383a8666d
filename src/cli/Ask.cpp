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

namespace quillo::cli {

void ask(control::Command command, const std::function<void(const control::Answer&)>& tell) {
    using Clock = std::chrono::steady_clock;
    const auto folder = dataFolder();
    if (!folder)
        return tell(folder.error());
    control::Request request{std::move(command), unicode::systemTimeZone(), unicode::systemLocale()};
    if (const std::optional<control::Answer> answer = control::ask(*folder, request))
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
        if (const std::optional<control::Answer> answer = control::ask(*folder, request))
            return tell(*answer);
        if (Clock::now() >= deadline)
            return tell(PreferencesLock::heldByAnother(*folder));
        std::this_thread::sleep_for(PreferencesLock::interval);
    }
}

} // namespace quillo::cli
