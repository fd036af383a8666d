/// A list that can be kept in step with others, and what lies behind it, on the disk.
#pragma once

#include "base/ManualExecutor.h"
#include "base/NotificationCenter.h"
#include "entry/SyncCommands.h"
#include "store/Backups.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingFolderPanel.h"
#include "support/RecordingReminderCenter.h"
#include "support/TemporaryFolder.h"
#include "sync/SyncedCloudStore.h"
#include "ui/sync/SyncModel.h"
#include "unicode/CivilCalendar.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>

namespace quillo::support {

struct SyncWorld {
    SyncModelDependencies dependencies() {
        return {preferences, cloud, commands, store, panel, clock, calendar};
    }

    std::filesystem::path newFolder(const char* name) const {
        const std::filesystem::path made = folder.path() / name;
        std::filesystem::create_directory(made);
        return made;
    }

    /// Lets happen what is to happen until that is so; for seconds at most.
    void until(const std::function<bool()>& isSo) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!isSo() && std::chrono::steady_clock::now() < deadline) {
            cloud.await(std::chrono::milliseconds(5));
            EXPECT_TRUE(store.drain());
            mainExecutor.run();
        }
        EXPECT_TRUE(isSo());
    }

    TemporaryFolder folder;
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    FixedClock clock; ///< 2025-03-04, 10:41 in Berlin
    InMemoryPreferences preferences;
    RecordingReminderCenter reminders;
    NotificationCenter notifications;
    ManualExecutor mainExecutor;
    Backups backups{folder.path(), clock};
    SyncedCloudStore cloud{folder.path(), mainExecutor, clock};
    TodoStore store{{preferences, cloud, reminders, clock, notifications, mainExecutor, &backups}};
    SyncCommands commands{{preferences, cloud, store, clock, mainExecutor, nullptr}};
    RecordingFolderPanel panel;
};

} // namespace quillo::support
