#include "cli/UnderstandText.h"

#include "base/Clock.h"
#include "base/ManualExecutor.h"
#include "cli/BlockingParser.h"
#include "cli/Session.h"
#include "cli/UsersLanguageModel.h"
#include "entry/Place.h"

#include <string>
#include <variant>

namespace quillo::cli {

namespace {

/// The text that may speak of a time, or null.
const std::string* textOf(const control::Command& command) {
    if (const auto* const add = std::get_if<control::Add>(&command))
        return &add->text;
    const auto* const remind = std::get_if<control::Remind>(&command);
    return remind != nullptr && !remind->when.empty() ? &remind->when : nullptr;
}

Outcome nameByIdentifier(std::string& task) {
    const auto session = Session::look();
    if (!session)
        return session.error();
    const Result<control::NumberedItem> found = (*session)->find(task);
    if (!found)
        return found.error();
    task = found->item.id.toString();
    return success();
}

} // namespace

Result<std::optional<UnderstoodText>> understandText(control::Request& request) {
    const std::string* const text = textOf(request.command);
    if (text == nullptr)
        return std::optional<UnderstoodText>();
    ManualExecutor mainExecutor;
    ChosenLanguageModel languageModel = usersLanguageModel(mainExecutor);
    const auto place = Place::create(request.zone, request.locale, &languageModel);
    if (!place)
        return place.error();
    const Instant now = SystemClock().now();
    auto* const remind = std::get_if<control::Remind>(&request.command);
    if (remind != nullptr && (*place)->parser().parse(*text, now).path == ParsePath::Miss) {
        if (const Outcome named = nameByIdentifier(remind->task); !named)
            return named.error();
    }
    return std::optional(UnderstoodText{BlockingParser(mainExecutor).parse(**place, *text, now).task, now});
}

} // namespace quillo::cli
