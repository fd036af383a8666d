/// The questions that lines of JSON can ask.
#include "cli/Classification.h"
#include "cli/JsonLines.h"
#include "cli/Understanding.h"
#include "parser/ResolveDate.h"

namespace quillo::cli {

namespace {

Result<std::string> understanding(const BlockingParser& parser, const JsonMember& question, Instant now,
                                  const Place& place) {
    const Result<std::string> text = textOf(question, "text", {});
    if (!text)
        return text.error();
    return membersOf(parser.parse(place, *text, now), *text, nullptr);
}

Result<std::string> resolution(const JsonMember& question, Instant now, const Place& place) {
    const Result<GeneratedTodo> todo = readClassification(question);
    if (!todo)
        return todo.error();
    return "\"due\":" + dueAsJson(resolveDate(*todo, now, place.calendar()));
}

} // namespace

JsonQuestion textQuestion(const BlockingParser& parser) {
    return {"text", [&parser](const JsonMember& question, Instant now, const Place& place) {
                return understanding(parser, question, now, place);
            }};
}

JsonQuestion classificationQuestion() {
    return {"classification", resolution};
}

} // namespace quillo::cli
