/// Keeping the list in step with other computers: choosing the place, and making sure that what is here gets
/// there.
#pragma once

#include "control/Answer.h"
#include "control/Request.h"
#include "ports/Preferences.h"
#include "store/TodoStore.h"
#include "sync/SyncedCloudStore.h"

#include <functional>
#include <optional>

namespace quillo {

/// What they work with; all of it outlives them. The cloud store is that of the task list.
struct SyncCommandsDependencies {
    Preferences& preferences;
    SyncedCloudStore& cloud;
    TodoStore& store;
};

/// Belongs to the main thread. Errors are for the user's eyes.
///
/// After each exchange, a list that is later than what the place has is put there: one that was saved just
/// before the program was killed, or whose file there has gone.
class SyncCommands {
public:
    using Reply = std::function<void(const control::Answer&)>;

    explicit SyncCommands(const SyncCommandsDependencies& dependencies);

    /// Whether a place is chosen, and it is on in the settings.
    bool isWanted() const;

    /// Has the list kept in step through that place from now on; replies once it has been looked at. Where
    /// both sides have tasks, and not the same, an error asks which to keep, unless that is said: nothing is
    /// changed then. The list that does not go on is kept among the earlier ones.
    void use(const control::UseSync& what, Reply reply);

    /// Replies when everything was sent and read, or with what is in the way.
    void now(Reply reply);

private:
    control::Answer useLookedAt(const control::UseSync& what,
                                const Result<std::optional<StampedBytes>>& found);
    bool isOn() const;
    void resume();

    const SyncCommandsDependencies with_;
    Connection exchanged_;
};

} // namespace quillo
