#include "parser/GeneratedTodoContent.h"

#include "unicode/Text.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace quillo {

namespace {

using Type = PropertyGuide::Type;

constexpr std::string_view kindName = "kind";
constexpr std::string_view amountName = "amount";
constexpr std::string_view monthName = "month";
constexpr std::string_view dayName = "day";
constexpr std::string_view hasTimeName = "hasTime";
constexpr std::string_view hourName = "hour";
constexpr std::string_view minuteName = "minute";
constexpr std::string_view titleName = "title";

/// Takes values out of an answer by name. Once one cannot be had, the rest is left alone.
class Reader {
public:
    explicit Reader(const GeneratedContent& content) : content_(content) {
        // As many as there are names to be found: so none is there twice, and no other.
        if (const std::size_t wanted = generatedTodoSchema().size(); content.properties.size() != wanted)
            problem_ = Error{std::to_string(content.properties.size()) + " properties in place of " +
                             std::to_string(wanted)};
    }

    template <class Value>
    void read(std::string_view name, Value& value) {
        if (problem_)
            return;
        const auto found = std::find_if(content_.properties.begin(), content_.properties.end(),
                                        [&](const auto& property) { return property.first == name; });
        if (found == content_.properties.end())
            problem_ = Error{"no property \"" + std::string(name) + "\""};
        else if (const auto* const given = std::get_if<Value>(&found->second))
            value = *given;
        else
            problem_ = Error{"the property \"" + std::string(name) + "\" is of another type"};
    }

    const std::optional<Error>& problem() const { return problem_; }

private:
    const GeneratedContent& content_;
    std::optional<Error> problem_;
};

} // namespace

AnswerSchema generatedTodoSchema() {
    static const PropertyGuide guides[] = {
        {.name = kindName,
         .type = Type::Text,
         .choices = rawValues(),
         .description = "Pick the SINGLE best-matching enum case. NONE if there's any doubt."},
        {.name = amountName,
         .type = Type::Integer,
         .description = "Required for IN_MINUTES/IN_HOURS/IN_DAYS/IN_WEEKS/WEEKS_FROM_TOMORROW."},
        {.name = monthName,
         .type = Type::Integer,
         .description = "Month 1-12 for SPECIFIC_DATE. 0 if no month given or kind is not SPECIFIC_DATE."},
        {.name = dayName, .type = Type::Integer, .description = "Day 1-31 for SPECIFIC_DATE. 0 otherwise."},
        {.name = hasTimeName,
         .type = Type::Boolean,
         .description = "True only when input specifies a TIME OF DAY."},
        {.name = hourName,
         .type = Type::Integer,
         .description = "Hour 0-23 (24-hour). 0 if hasTime is false."},
        {.name = minuteName, .type = Type::Integer, .description = "Minute 0-59. 0 if hasTime is false."},
        {.name = titleName,
         .type = Type::Text,
         .description = "Clean task title with all temporal phrases stripped."},
    };
    return guides;
}

Result<GeneratedTodo> readGeneratedTodo(const GeneratedContent& content) {
    GeneratedTodo todo;
    std::string rawValue;
    Reader reader(content);
    reader.read(kindName, rawValue);
    reader.read(amountName, todo.amount);
    reader.read(monthName, todo.month);
    reader.read(dayName, todo.day);
    reader.read(hasTimeName, todo.hasTime);
    reader.read(hourName, todo.hour);
    reader.read(minuteName, todo.minute);
    reader.read(titleName, todo.title);
    if (reader.problem())
        return *reader.problem();

    const Result<WhenKind> kind = whenKindOf(rawValue);
    if (!kind)
        return kind.error();
    todo.kind = *kind;
    todo.title = unicode::toUtf8(unicode::toUtf16(todo.title));
    if (unicode::characterCount(todo.title) > longestGeneratedTitle)
        return Error{"the title is too long"};
    return todo;
}

GeneratedContent contentOf(const GeneratedTodo& todo) {
    GeneratedContent content;
    const auto add = [&](std::string_view name, GeneratedContent::Value value) {
        content.properties.emplace_back(name, std::move(value));
    };
    add(kindName, std::string(rawValueOf(todo.kind)));
    add(amountName, todo.amount);
    add(monthName, todo.month);
    add(dayName, todo.day);
    add(hasTimeName, todo.hasTime);
    add(hourName, todo.hour);
    add(minuteName, todo.minute);
    add(titleName, todo.title);
    return content;
}

} // namespace quillo
