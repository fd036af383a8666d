#include "control/Request.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <cstdint>
#include <optional>
#include <utility>

namespace quillo::control {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void write(Writer& writer, const char* key, std::string_view text) {
    writer.Key(key);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

struct Encoder {
    Writer& writer;

    void operator()(const Add& add) const {
        write(writer, "command", "add");
        write(writer, "text", add.text);
    }
    void operator()(const SetDone& set) const {
        write(writer, "command", set.done ? "done" : "undone");
        write(writer, "task", set.task);
    }
    void operator()(const Edit& edit) const {
        write(writer, "command", "edit");
        write(writer, "task", edit.task);
        write(writer, "text", edit.text);
    }
    void operator()(const Delete& remove) const {
        write(writer, "command", "delete");
        write(writer, "task", remove.task);
    }
    void operator()(const ClearCompleted&) const { write(writer, "command", "clear-completed"); }
    void operator()(const Remind& remind) const {
        write(writer, "command", "remind");
        write(writer, "task", remind.task);
        write(writer, "when", remind.when);
    }
    void operator()(const Restore& restore) const {
        write(writer, "command", "restore");
        writer.Key("which");
        writer.Uint64(restore.which);
    }
    void operator()(const UseModel& use) const {
        write(writer, "command", "use-model");
        write(writer, "choice", use.choice);
    }
    void operator()(const UseSync& use) const {
        write(writer, "command", "use-sync");
        write(writer, "place", use.place);
        write(writer, "keep", use.keep);
        if (use.password)
            write(writer, "password", *use.password);
    }
    void operator()(const SyncNow& now) const {
        write(writer, "command", "sync-now");
        if (now.password)
            write(writer, "password", *now.password);
    }
    void operator()(const ForgetDevice& forget) const {
        write(writer, "command", "sync-forget");
        write(writer, "device", forget.device);
    }
    void operator()(const Show& show) const { write(writer, "command", std::string(nameOf(show.window))); }
    void operator()(const Quit&) const { write(writer, "command", "quit"); }
};

/// The members of a request's object. Remembers the first that is missing or of another type.
class Members {
public:
    explicit Members(simdjson::dom::object object) : object_(object) {}

    std::string text(const char* name) {
        std::string_view text;
        if (object_[name].get_string().get(text) != simdjson::SUCCESS)
            complain(name);
        return std::string(text);
    }

    std::optional<std::string> optionalText(const char* name) {
        if (object_[name].error() == simdjson::NO_SUCH_FIELD)
            return std::nullopt;
        return text(name);
    }

    std::size_t number(const char* name) {
        std::uint64_t number = 0;
        if (object_[name].get_uint64().get(number) != simdjson::SUCCESS)
            complain(name);
        return number;
    }

    const std::optional<Error>& complaint() const { return complaint_; }

private:
    void complain(const char* name) {
        if (!complaint_)
            complaint_ = Error{std::string("\"") + name + "\" is missing or of another type"};
    }

    simdjson::dom::object object_;
    std::optional<Error> complaint_;
};

std::optional<Command> commandOf(const std::string& name, Members& members) {
    if (name == "add")
        return Add{members.text("text")};
    if (name == "done" || name == "undone")
        return SetDone{members.text("task"), name == "done"};
    if (name == "edit")
        return Edit{members.text("task"), members.text("text")};
    if (name == "delete")
        return Delete{members.text("task")};
    if (name == "clear-completed")
        return ClearCompleted{};
    if (name == "remind")
        return Remind{members.text("task"), members.text("when")};
    if (name == "restore")
        return Restore{members.number("which")};
    if (name == "use-model")
        return UseModel{members.text("choice")};
    if (name == "use-sync")
        return UseSync{members.text("place"), members.text("keep"), members.optionalText("password")};
    if (name == "sync-now")
        return SyncNow{members.optionalText("password")};
    if (name == "sync-forget")
        return ForgetDevice{members.text("device")};
    if (name == "quit")
        return Quit{};
    if (const auto window = windowNamed(name))
        return Show{*window};
    return std::nullopt;
}

} // namespace

std::string_view nameOf(Show::Window window) {
    switch (window) {
    case Show::Window::popover:
        return "open";
    case Show::Window::quickAdd:
        return "quick-add";
    case Show::Window::settings:
        return "settings";
    case Show::Window::statistics:
        return "statistics";
    }
    return {};
}

std::optional<Show::Window> windowNamed(std::string_view name) {
    for (const auto window :
         {Show::Window::popover, Show::Window::quickAdd, Show::Window::settings, Show::Window::statistics}) {
        if (name == nameOf(window))
            return window;
    }
    return std::nullopt;
}

std::string encode(const Request& request) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    std::visit(Encoder{writer}, request.command);
    write(writer, "tz", request.zone);
    write(writer, "locale", request.locale);
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + '\n';
}

Result<Request> decodeRequest(std::string_view line) {
    if (line.size() > longestRequest)
        return Error{"the request is too long"};
    simdjson::dom::parser parser;
    simdjson::dom::object object;
    if (parser.parse(line.data(), line.size()).get_object().get(object) != simdjson::SUCCESS)
        return Error{"the request is not a JSON object"};
    Members members(object);
    const std::string name = members.text("command");
    std::optional<Command> command = commandOf(name, members);
    Request request{{}, members.text("tz"), members.text("locale")};
    if (members.complaint())
        return *members.complaint();
    if (!command)
        return Error{"unknown command \"" + name + "\""};
    request.command = *std::move(command);
    return request;
}

} // namespace quillo::control
