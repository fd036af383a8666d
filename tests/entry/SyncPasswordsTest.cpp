// Passwords on their way from a command to where they are kept, and computers that are forgotten.
#include "base/NotificationCenter.h"
#include "entry/SyncCommands.h"
#include "support/AwaitingExecutor.h"
#include "support/CapturedLog.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/RecordingReminderCenter.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"
#include "sync/ThisDevice.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillo {
namespace {

using Sequence = std::vector<std::string>;

/// Keeps them in memory, and says what it was asked for.
class RecordingPasswords final : public Passwords {
public:
    Result<std::optional<std::string>> find(const WebDavFolder& place) override {
        const std::lock_guard lock(mutex);
        const auto found = kept.find(place.user);
        return found != kept.end() ? std::optional(found->second) : std::nullopt;
    }
    Result<Kept> keep(const WebDavFolder& place, std::string password) override {
        const std::lock_guard lock(mutex);
        kept[place.user] = std::move(password);
        calls.push_back("keep " + place.user);
        return Kept::ForGood;
    }
    Outcome forget(const WebDavFolder& place) override {
        const std::lock_guard lock(mutex);
        kept.erase(place.user);
        calls.push_back("forget " + place.user);
        return forgotten;
    }

    std::mutex mutex;
    std::map<std::string, std::string> kept;
    Sequence calls;
    Outcome forgotten = success();
};

/// What is at the server.
struct Files {
    std::mutex mutex;
    std::vector<DeviceFile> all;
};

/// A server that takes one password; and one computer that has left a list there.
class ServerCarrier final : public Carrier {
public:
    ServerCarrier(WebDavFolder place, std::shared_ptr<Passwords> passwords, Files& files)
        : place_(std::move(place)), passwords_(std::move(passwords)), files_(files) {}

    Exchange exchange(Mirror& /*mirror*/) override {
        Exchange exchange;
        const auto password = passwords_->find(place_);
        if (!password || !*password)
            exchange.outcome = passwordIsWanted(place_);
        else if (**password != "right")
            exchange.outcome = Error{"the password is wrong"};
        const std::lock_guard lock(files_.mutex);
        for (const DeviceFile& file : files_.all)
            exchange.devices.push_back({file.device, file.list.stamp});
        return exchange;
    }
    void awaitNews(int wake) override {
        pollfd source{wake, POLLIN, 0};
        poll(&source, 1, -1);
    }
    Result<DeviceFile> fileOf(const Uuid& device) override {
        const std::lock_guard lock(files_.mutex);
        for (const DeviceFile& file : files_.all) {
            if (file.device.id == device)
                return file;
        }
        return Error{"it is not there"};
    }
    Outcome forget(const Uuid& device, double stamp) override {
        const std::lock_guard lock(files_.mutex);
        return std::erase_if(files_.all,
                             [&](const DeviceFile& file) {
                                 return file.device.id == device && file.list.stamp == stamp;
                             }) == 1
                   ? success()
                   : Error{"it is not there"};
    }

private:
    const WebDavFolder place_;
    const std::shared_ptr<Passwords> passwords_;
    Files& files_;
};

const std::string server = "webdav https://cloud.example.org/dav me";

class SyncPasswordsTest : public testing::Test {
protected:
    control::Answer use(const std::string& place, std::optional<std::string> password = std::nullopt) {
        return answer([&](auto reply) { commands_.use({place, "", std::move(password)}, reply); });
    }
    control::Answer forget(const std::string& device) {
        return answer([&](auto reply) { commands_.forget(control::ForgetDevice{device}, reply); });
    }

    template <class Ask>
    control::Answer answer(Ask ask) {
        std::optional<control::Answer> given;
        ask([&](const control::Answer& reply) { given = reply; });
        EXPECT_TRUE(executor_.runUntil([&] { return given.has_value(); }));
        return *given;
    }

    void leaves(DeviceFile file) {
        const std::lock_guard lock(files_.mutex);
        files_.all.push_back(std::move(file));
    }
    std::size_t filesThere() {
        const std::lock_guard lock(files_.mutex);
        return files_.all.size();
    }

    std::optional<std::string> chosen() const { return preferences_.text(preference_keys::syncPlace); }

    /// A computer on which something was changed so many days ago last.
    Uuid leaves(double daysAgo, const std::vector<TodoItem>& tasks) {
        const Uuid id = Uuid::random();
        const double stamp = clock_.now().unixSeconds() - daysAgo * 24 * 60 * 60;
        leaves({{id, "old laptop", ""}, {Data(*encodeStoredItems(tasks)), stamp}});
        return id;
    }

    support::CapturedLog log_;
    support::TemporaryFolder folder_;
    support::FixedClock clock_{{800'000'000}};
    support::AwaitingExecutor executor_;
    support::InMemoryPreferences preferences_;
    support::RecordingReminderCenter reminders_;
    NotificationCenter notifications_;
    Files files_;
    std::shared_ptr<RecordingPasswords> passwords_ = std::make_shared<RecordingPasswords>();
    Backups backups_{folder_.path(), clock_};
    SyncedCloudStore cloud_{folder_.path(), executor_, clock_};
    TodoStore store_{{preferences_, cloud_, reminders_, clock_, notifications_, executor_, &backups_}};
    SyncCommands commands_{{preferences_, cloud_, store_, clock_, executor_, passwords_,
                            [this](const SyncPlace& place, PlaceIs, Preferences&,
                                   std::shared_ptr<Passwords> passwords) -> std::unique_ptr<Carrier> {
                                const auto* const folder = std::get_if<WebDavFolder>(&place);
                                if (folder == nullptr)
                                    return nullptr;
                                return std::make_unique<ServerCarrier>(*folder, std::move(passwords), files_);
                            }}};
};

TEST_F(SyncPasswordsTest, OneThatIsRightIsKept) {
    EXPECT_TRUE(use(server, "right"));
    EXPECT_EQ(chosen(), server);
    EXPECT_EQ(passwords_->kept, (std::map<std::string, std::string>{{"me", "right"}}));
}

TEST_F(SyncPasswordsTest, OneThatIsWrongIsNot) {
    EXPECT_EQ(use(server, "wrong").error().message, "the password is wrong");
    EXPECT_EQ(chosen(), std::nullopt);
    EXPECT_TRUE(passwords_->calls.empty());
}

TEST_F(SyncPasswordsTest, OneThatIsWrongLeavesTheOneThatIsRight) {
    EXPECT_TRUE(use(server, "right"));
    EXPECT_FALSE(use(server, "wrong"));
    EXPECT_EQ(passwords_->kept.at("me"), "right");
    EXPECT_TRUE(answer([&](auto reply) { commands_.now({}, reply); }));
}

TEST_F(SyncPasswordsTest, OneThatIsKeptNeedNotBeGiven) {
    passwords_->kept["me"] = "right";
    EXPECT_TRUE(use(server));
    EXPECT_TRUE(passwords_->calls.empty());
}

TEST_F(SyncPasswordsTest, AreForgottenWithTheirPlace) {
    EXPECT_TRUE(use(server, "right"));
    EXPECT_TRUE(use("webdav https://cloud.example.org/dav you", "right"));
    EXPECT_EQ(passwords_->calls, (Sequence{"keep me", "forget me", "keep you"}));
    EXPECT_TRUE(use("off"));
    EXPECT_EQ(chosen(), std::nullopt);
    EXPECT_TRUE(passwords_->kept.empty());
    EXPECT_TRUE(use("off"));
    EXPECT_EQ(passwords_->calls.size(), 4U) << "there was nothing to forget any more";
}

TEST_F(SyncPasswordsTest, ThatCannotBeForgottenAreTold) {
    EXPECT_TRUE(use(server, "right"));
    passwords_->forgotten = Error{"the keyring stays locked"};
    EXPECT_EQ(use("off").error().message, "the place is not used any more, but its password could not be "
                                          "forgotten: the keyring stays locked");
    EXPECT_EQ(chosen(), std::nullopt);
}

TEST_F(SyncPasswordsTest, ThatAreNoneAreRefusedAndNotRepeated) {
    for (const auto& [place, password] : {std::pair<std::string, std::string>{server, "secret\n"},
                                          {server, ""},
                                          {server, "secret" + std::string(2000, 'x')},
                                          {"webdav https://cloud.example.org/dav", "secret"},
                                          {"folder /sync", "secret"}}) {
        const control::Answer answer = use(place, password);
        ASSERT_FALSE(answer) << place;
        EXPECT_EQ(answer.error().message.find("secret"), std::string::npos) << answer.error().message;
    }
    EXPECT_EQ(chosen(), std::nullopt);
    EXPECT_TRUE(passwords_->calls.empty());
}

TEST_F(SyncPasswordsTest, MayBeGivenLater) {
    EXPECT_TRUE(use(server, "right"));
    passwords_->kept.clear();
    EXPECT_EQ(
        answer([&](auto reply) { commands_.now({}, reply); }).error().message,
        "the password for me at https://cloud.example.org/dav is not known: give it in the settings, or "
        "to quillo sync now");
    EXPECT_TRUE(answer([&](auto reply) { commands_.givePassword("right", reply); }));
    EXPECT_EQ(passwords_->kept.at("me"), "right");
    EXPECT_FALSE(answer([&](auto reply) { commands_.now({"wrong"}, reply); }));
    EXPECT_TRUE(answer([&](auto reply) { commands_.now({"right"}, reply); }));
    EXPECT_TRUE(use("off"));
    EXPECT_FALSE(answer([&](auto reply) { commands_.givePassword("right", reply); }));
}

TEST_F(SyncPasswordsTest, AComputerThatIsSilentIsForgottenAndItsListIsKept) {
    EXPECT_TRUE(use(server, "right"));
    const Uuid old = leaves(366, {support::Task("left behind")});
    const Uuid empty = leaves(400, {});
    EXPECT_TRUE(forget(old.toString()));
    ASSERT_EQ(filesThere(), 1U);
    ASSERT_EQ(backups_.listTimes().size(), 1U);
    EXPECT_NE(backups_.list(1)->bytes().find("left behind"), std::string_view::npos);
    EXPECT_TRUE(forget(empty.toString().substr(0, 8)));
    EXPECT_EQ(filesThere(), 0U);
    EXPECT_EQ(backups_.listTimes().size(), 1U);
}

TEST_F(SyncPasswordsTest, OtherComputersAreNot) {
    EXPECT_TRUE(use(server, "right"));
    const Uuid recent = leaves(364, {support::Task("task")});
    EXPECT_EQ(forget(recent.toString()).error().message, "something was changed on old laptop within a year");
    const Uuid own = thisDevice(preferences_).id;
    leaves({{own, "this one", ""}, {Data("[]"), 1}});
    EXPECT_EQ(forget(own.toString()).error().message, "that is this computer");
    for (const std::string name : {"", "old laptop", "12345678", "1"})
        EXPECT_FALSE(forget(name)) << name;
    EXPECT_FALSE(forget(recent.toString().substr(0, 7)));
    EXPECT_EQ(filesThere(), 2U);
    EXPECT_TRUE(backups_.listTimes().empty());
}

TEST_F(SyncPasswordsTest, AComputerWhoseListCannotBeReadIsNotForgotten) {
    EXPECT_TRUE(use(server, "right"));
    const Uuid old = Uuid::random();
    leaves({{old, "old laptop", ""}, {Data("half of"), 1}});
    EXPECT_EQ(forget(old.toString()).error().message, "its list cannot be read");
    EXPECT_EQ(filesThere(), 1U);
}

} // namespace
} // namespace quillo
