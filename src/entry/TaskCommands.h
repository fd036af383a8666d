/// What can be asked of the list in words: the commands behind the command line.
///
/// A task is named by its number, its place in the whole list with the newest as 1, or by its identifier, of
/// which eight or more hexadecimal digits from the front will do where they fit one task only.
#pragma once

#include "base/Clock.h"
#include "control/Answer.h"
#include "control/Request.h"
#include "entry/AddTask.h"
#include "entry/Place.h"
#include "entry/SetReminder.h"
#include "parser/ParserService.h"
#include "ports/LanguageModel.h"
#include "store/TodoStore.h"

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string_view>

namespace quillo {

/// What the commands work with; all of it outlives them.
struct TaskCommandsDependencies {
    const Clock& clock;
    TodoStore& store;
    AddTask& addTask;
    SetReminder& setReminder;
    LanguageModel* languageModel = nullptr; ///< asked about texts that the rules cannot date
};

/// Belongs to the main thread. Errors are for the user's eyes.
class TaskCommands {
public:
    using Reply = std::function<void(const control::Answer&)>;

    explicit TaskCommands(const TaskCommandsDependencies& dependencies)
        : with_(dependencies), places_(with_.languageModel) {}

    /// Does what is asked and replies once with the tasks it was about: at once, except for `restore`, which
    /// waits for the disk, and for `add` and `remind`, where a language model may think about the text. What
    /// was changed is in memory then and may still have to be saved. Never replies after this is gone.
    ///
    /// A task that is as it is to become is left alone. Where there is nothing to clear nothing is written.
    void answer(const control::Request& request, Reply reply);

    /// The same for a request whose text, that of `add` or `remind`, was understood already.
    void answer(const control::Request& request, const UnderstoodText& text, Reply reply);

    /// The task of that name, or why there is none.
    Result<control::NumberedItem> find(std::string_view task) const;

    /// Replies to each `remind` for which a model still thinks, as if none answered. What was asked to be
    /// added is AddTask's to end.
    void giveUpWaiting();

private:
    using WaitingParses = std::list<std::unique_ptr<PendingParse>>;

    void apply(const control::Add& add, const std::shared_ptr<const Place>& place, Reply reply);
    control::Answer apply(const control::SetDone& set);
    control::Answer apply(const control::Edit& edit);
    control::Answer apply(const control::Delete& remove);
    control::Answer clearCompleted();
    void apply(const control::Remind& remind, const std::shared_ptr<const Place>& place, Reply reply);
    control::Answer remind(const Uuid& task, const std::string& when, const ParsedTask& meaning);
    control::Answer setDueDate(const Uuid& task, std::optional<Instant> dueDate);
    control::NumberedItem numbered(std::size_t index) const;

    const TaskCommandsDependencies with_;
    Places places_;
    WaitingParses waiting_; ///< of what reminders are to be set to, in the order in which they were asked for
};

} // namespace quillo
