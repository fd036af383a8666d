#include "review/ReviewPromptService.h"

#include <limits>
#include <utility>
#include <vector>

namespace quillo {

ReviewPromptService::ReviewPromptService(Preferences& preferences, NotificationCenter& notifications,
                                         std::optional<std::string> shortVersion)
    : preferences_(preferences), notifications_(notifications),
      shortVersion_(std::move(shortVersion).value_or("0")) {}

void ReviewPromptService::noteCompletion() {
    using namespace preference_keys;
    std::int64_t count = preferences_.integer(reviewCompletions).value_or(0);
    if (count < std::numeric_limits<std::int64_t>::max()) // Only a foreign value gets there.
        ++count;
    std::vector<Change> changes{{std::string(reviewCompletions), count}};
    const bool asks = count == firstPromptAt && preferences_.text(reviewLastPromptedVersion) != shortVersion_;
    if (asks) {
        changes.push_back({std::string(reviewLastPromptedVersion), shortVersion_});
        changes.push_back({std::string(reviewPending), true});
    }
    preferences_.apply(std::move(changes));
    if (asks)
        notifications_.post(notifications::shouldRequestReview);
}

bool ReviewPromptService::takePendingRequest() {
    if (!preferences_.boolean(preference_keys::reviewPending).value_or(false))
        return false;
    preferences_.remove(preference_keys::reviewPending);
    return true;
}

} // namespace quillo
