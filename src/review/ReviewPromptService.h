/// When to ask for feedback: once, after a handful of completed tasks.
#pragma once

#include "base/NotificationCenter.h"
#include "ports/Preferences.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

namespace notifications {

/// Posted when it is time to ask for feedback. Whoever asks takes the request: see
/// ReviewPromptService::takePendingRequest.
inline constexpr std::string_view shouldRequestReview = "Quillo.ShouldRequestReview";

} // namespace notifications

/// Counts completions, apart from the statistics so that switching those off or resetting them changes
/// nothing, and decides. It shows nothing itself and has no state but the preferences, so it makes no
/// difference which processes the completions happen in. Belongs to the main thread.
class ReviewPromptService {
public:
    /// The completion that asks. No later one ever does, not even under another version.
    static constexpr std::int64_t firstPromptAt = 5;

    /// The references outlive this. `shortVersion` is the program's, for example "1.2"; "0" stands for none.
    ReviewPromptService(Preferences& preferences, NotificationCenter& notifications,
                        std::optional<std::string> shortVersion);

    /// To be called each time a task becomes done, also one that was reopened. Posts shouldRequestReview if
    /// this is the time to ask and this version has not asked before.
    void noteCompletion();

    /// Whether there is a request that nobody has taken yet; takes it. A request is kept in the preferences
    /// from before it is posted until it is taken, as the process that posts it may be a command with nobody
    /// in it to hear. So whoever asks for feedback calls this when hearing the post and whenever it appears,
    /// and asks if the answer is true.
    bool takePendingRequest();

private:
    Preferences& preferences_;
    NotificationCenter& notifications_;
    const std::string shortVersion_;
};

} // namespace quillo
