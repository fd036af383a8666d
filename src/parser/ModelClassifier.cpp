#include "parser/ModelClassifier.h"

#include "base/UtcTime.h"
#include "parser/GeneratedTodoContent.h"
#include "parser/ModelInstructions.h"
#include "parser/ResolveDate.h"
#include "unicode/Text.h"

#include <chrono>
#include <string_view>
#include <utility>

namespace quillo {

namespace {

/// The calendar here is the Gregorian one, whichever the user's is.
ModelReference referenceAt(Instant now, const unicode::CivilCalendar& where) {
    using namespace std::chrono;
    const UtcSeconds shown = floorToSecond(now + where.offsetFromUtc(now));
    const sys_days day = floor<days>(shown);
    const year_month_day date(day);
    const hh_mm_ss time(shown - day);
    return {.now = now,
            .zone = where.zone(),
            .locale = where.locale(),
            .year = static_cast<int>(date.year()),
            .month = static_cast<int>(static_cast<unsigned>(date.month())),
            .day = static_cast<int>(static_cast<unsigned>(date.day())),
            .weekday = static_cast<int>(weekday(day).c_encoding()) + 1,
            .hour = static_cast<int>(time.hours().count()),
            .minute = static_cast<int>(time.minutes().count())};
}

std::string interpretationOf(const GeneratedTodo& todo) {
    return "AI: " + std::string(rawValueOf(todo.kind)) + " amount=" + std::to_string(todo.amount) +
           " m=" + std::to_string(todo.month) + " d=" + std::to_string(todo.day) +
           " hasTime=" + (todo.hasTime ? "true" : "false") + " " + std::to_string(todo.hour) + ":" +
           std::to_string(todo.minute);
}

/// A score is foreign as well.
std::optional<double> validated(std::optional<double> score) {
    return score && *score >= 0 && *score <= 1 ? score : std::nullopt;
}

Parse parseOf(Classification classification, const std::string& text, Instant now,
              const unicode::CivilCalendar& calendar) {
    const GeneratedTodo& todo = classification.todo;
    const std::u16string title = unicode::toUtf16(todo.title);
    ParsedTask task{unicode::toUtf8(unicode::trim(title)), resolveDate(todo, now, calendar),
                    interpretationOf(todo)};
    if (task.title.empty())
        task.title = text;
    return {std::move(task), true, ParsePath::Model, std::move(classification)};
}

} // namespace

std::unique_ptr<LanguageModelSession> ModelClassifier::classify(const std::string& text, Instant now,
                                                                Reply reply) const {
    if (!model_.isAvailable() || unicode::characterCount(text) > longestText) {
        reply(std::nullopt);
        return nullptr;
    }
    auto session = model_.startSession(modelInstructions(now, format_), referenceAt(now, calendar_));
    session->respond(
        text, generatedTodoSchema(),
        scope_.guard([this, text, now, reply = std::move(reply)](const Result<GeneratedContent>& content) {
            // Why there is no answer matters to nobody: the text is kept as it is then.
            const Result<GeneratedTodo> todo = content ? readGeneratedTodo(*content) : content.error();
            reply(todo ? std::optional(parseOf({*todo, validated(content->score)}, text, now, calendar_))
                       : std::nullopt);
        }));
    return session;
}

void ModelClassifier::prewarm(Instant now) const {
    if (model_.isAvailable())
        model_.startSession("warm up", referenceAt(now, calendar_))->prewarm();
}

} // namespace quillo
