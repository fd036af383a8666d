/// Keeping the list in step with other computers: choosing the place, and making sure that what is here gets
/// there.
#pragma once

#include "base/CallbackScope.h"
#include "base/Clock.h"
#include "base/Executor.h"
#include "base/LeftAloneQueue.h"
#include "control/Answer.h"
#include "control/Request.h"
#include "ports/Preferences.h"
#include "store/TodoStore.h"
#include "sync/MakeCarrier.h"
#include "sync/Passwords.h"
#include "sync/SyncedCloudStore.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillo {

/// What they work with; all of it outlives them. The cloud store is that of the task list.
struct SyncCommandsDependencies {
    Preferences& preferences;
    SyncedCloudStore& cloud;
    TodoStore& store;
    const Clock& clock;
    Executor& mainExecutor;
    std::shared_ptr<Passwords> passwords;
    std::function<decltype(quillo::makeCarrier)> makeCarrier = quillo::makeCarrier;
};

/// How many tasks there are on either side.
struct BothHaveTasks {
    std::size_t here = 0;
    std::size_t there = 0;
};

/// Belongs to the main thread. Errors are for the user's eyes.
///
/// After each exchange, a list that is later than what the place has is put there: one that was saved just
/// before the program was killed, or whose file there has gone.
///
/// Passwords are kept and forgotten behind the main thread's back, as the user may have to be asked. The end
/// of the program does not wait for that.
class SyncCommands {
public:
    using Reply = std::function<void(const control::Answer&)>;

    /// Absent where the place is used now; else somebody has to say first whose tasks go on.
    using Chosen = Result<std::optional<BothHaveTasks>>;

    explicit SyncCommands(const SyncCommandsDependencies& dependencies);

    /// Gives up what is under way at a place.
    ~SyncCommands();

    /// Whether a place is chosen, and it is on in the settings.
    bool isWanted() const;

    /// Has the list kept in step through that place from now on; tells what came of it once it has been
    /// looked at. Where both sides have tasks, and not the same, nothing is changed unless it is said which
    /// to keep. The list that does not go on is kept among the earlier ones.
    ///
    /// A password is kept once the place could be used with it; that of the place that was used before is
    /// forgotten.
    void choose(const control::UseSync& what, std::function<void(const Chosen&)> told);

    /// The same, for commands: an error asks which to keep.
    void use(const control::UseSync& what, Reply reply);

    /// Looks whether that place could be used, with that password. It is made ready, but nothing is sent, and
    /// nothing kept.
    void test(const control::UseSync& what, std::function<void(const Outcome&)> told);

    /// Replies when everything was sent and read, or with what is in the way. A password is kept before, see
    /// givePassword().
    void now(const control::SyncNow& what, Reply reply);

    /// Keeps the password of the place that is chosen, by the keyring or until the program ends, and replies
    /// as now() does.
    void givePassword(std::string password, Reply reply);

    /// Takes away what a computer has left at the place on which nothing was changed for a year (isSilent());
    /// its list is kept among the earlier ones before, if it has tasks.
    void forget(const control::ForgetDevice& what, Reply reply);

private:
    struct Trial;
    Result<Trial> begin(const control::UseSync& what) const;
    void leave(const SyncPlace& place, std::function<void(const Outcome&)> told);
    Chosen useLookedAt(const SyncPlace& place, const std::string& keep,
                       const Result<std::optional<StampedBytes>>& found);
    Result<FoundDevice> deviceNamed(const std::string& name) const;
    Outcome mayBeForgotten(const FoundDevice& device) const;
    void forget(const FoundDevice& device, Reply reply);
    void exchange(Reply reply);
    bool isOn() const;
    void resume();

    const SyncCommandsDependencies with_;
    Connection exchanged_;
    LeftAloneQueue aside_;
    std::vector<std::weak_ptr<Carrier>> forgetting_; ///< the ways of what is under way aside
    CallbackScope scope_;
};

} // namespace quillo
