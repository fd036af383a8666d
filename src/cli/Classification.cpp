#include "cli/Classification.h"

#include <utility>

namespace quillo::cli {

Result<GeneratedTodo> readClassification(const JsonMember& classification) {
    if (classification.kind != JsonMember::Kind::Object)
        return Error{"\"classification\" must be an object"};
    const auto members = readJsonMembers(
        classification.text, {"kind", "amount", "month", "day", "hasTime", "hour", "minute", "title"});
    if (!members)
        return Error{"\"classification\" cannot be read"};

    const JsonMember& name = members->at("kind");
    if (name.kind == JsonMember::Kind::Absent)
        return Error{"\"kind\" is missing"};
    const Result<std::string> rawValue = textOf(name, "kind", {});
    if (!rawValue)
        return rawValue.error();
    const Result<WhenKind> kind = whenKindOf(*rawValue);
    if (!kind)
        return kind.error();
    const Result<bool> hasTime = flagOf(members->at("hasTime"), "hasTime", false);
    if (!hasTime)
        return hasTime.error();
    const Result<std::string> title = textOf(members->at("title"), "title", {});
    if (!title)
        return title.error();

    GeneratedTodo todo{.kind = *kind, .hasTime = *hasTime, .title = *title};
    const std::pair<std::string_view, std::int64_t*> integers[] = {{"amount", &todo.amount},
                                                                   {"month", &todo.month},
                                                                   {"day", &todo.day},
                                                                   {"hour", &todo.hour},
                                                                   {"minute", &todo.minute}};
    for (const auto& [member, number] : integers) {
        const Result<std::int64_t> value = integerOf(members->at(member), member, 0);
        if (!value)
            return value.error();
        *number = *value;
    }
    return todo;
}

} // namespace quillo::cli
