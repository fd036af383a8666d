/// A popover's surroundings, all in memory.
#pragma once

#include "ListWorld.h"
#include "entry/MenuActions.h"
#include "review/ReviewPromptService.h"
#include "stats/StatsStore.h"
#include "support/RecordingUrlOpener.h"
#include "ui/feedback/Feedback.h"
#include "ui/popover/PopoverModel.h"

#include <string>

namespace quillo::support {

struct PopoverWorld : ListWorld {
    ReviewPromptService reviewPrompts{preferences, notifications, "1.0"};
    RecordingUrlOpener opener;
    Feedback feedback{opener, {"makers@example.org", "https://example.org/review", "1.0", "7"}};
    StatsStore stats{{preferences, clock, calendar, notifications}};
    MenuActions actions;

    PopoverModelDependencies popover() {
        return {
            .store = store,
            .setReminder = setReminder,
            .reviewPrompts = reviewPrompts,
            .feedback = feedback,
            .notifications = notifications,
            .clock = clock,
            .calendar = calendar,
            .statsStore = [this]() -> StatsStore& { return stats; },
            .addTask = [](const std::string&) {},
            .actions = actions,
        };
    }
};

} // namespace quillo::support
