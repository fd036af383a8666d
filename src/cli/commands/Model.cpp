#include "cli/PrettyJson.h"
#include "cli/Session.h"
#include "cli/Terminal.h"
#include "cli/commands/Change.h"
#include "cli/commands/Commands.h"
#include "languagemodel/LanguageModelChoice.h"
#include "languagemodel/ModelServersLibrary.h"
#include "languagemodel/PreferredLanguageModel.h"
#include "languagemodel/ServerAddress.h"
#include "languagemodel/WellKnownServers.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillo::cli {

namespace {

/// Servers at the usual places are here, and quick.
constexpr std::chrono::milliseconds limitOfList{1000};
/// The one that was chosen may be further away.
constexpr std::chrono::milliseconds limitOfStatus{3000};

using Names = Result<std::vector<std::string>>;
using Source = PreferredLanguageModel::Source;

void print(const rapidjson::StringBuffer& json) {
    std::printf("%s\n", json.GetString());
}

/// The models of each server, in the order of the addresses.
std::vector<Names> namesOf(const std::vector<std::string>& addresses, std::chrono::milliseconds limit) {
    if (ModelServers* const servers = loadModelServers())
        return servers->modelNames(addresses, limit);
    return std::vector<Names>(addresses.size(), Error{"what asks servers is missing"});
}

/// Ollama takes a name without a tag for the latest.
bool isAmong(const std::vector<std::string>& names, const std::string& model) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& name) { return name == model || name == model + ":latest"; });
}

/// What may be chosen.
struct Candidate {
    LanguageModelChoice choice;
    bool chosen = false;
    std::optional<std::string> problem = std::nullopt; ///< why it could not answer now
};

/// What stands in the list for a server: its models, and the choice if it is of this server.
void addServer(std::vector<Candidate>& candidates, const std::string& address, const Names& names,
               const ServedModel* chosen) {
    const bool ours = chosen != nullptr && chosen->address == address;
    if (!names) {
        if (ours)
            candidates.push_back({*chosen, true, names.error().message});
        return;
    }
    bool listed = false;
    std::vector<Candidate> models;
    for (const std::string& name : *names) {
        const bool isChosen = ours && chosen->model == name;
        models.push_back({isChosen ? *chosen : ServedModel{address, name}, isChosen});
        listed |= isChosen;
    }
    if (ours && !listed) {
        const bool there = chosen->model.empty() || isAmong(*names, chosen->model);
        candidates.push_back(
            {*chosen, true, there ? std::nullopt : std::optional<std::string>("it has no such model")});
    }
    candidates.insert(candidates.end(), models.begin(), models.end());
}

std::vector<Candidate> candidatesBeside(const LanguageModelChoice& preferred) {
    std::vector<Candidate> candidates{{EmbeddedModel{}, std::holds_alternative<EmbeddedModel>(preferred)},
                                      {NoModel{}, std::holds_alternative<NoModel>(preferred)}};
    const auto* const chosen = std::get_if<ServedModel>(&preferred);
    std::vector<std::string> addresses = wellKnownServers();
    if (chosen != nullptr &&
        std::find(addresses.begin(), addresses.end(), chosen->address) == addresses.end())
        addresses.push_back(chosen->address);
    const std::vector<Names> names = namesOf(addresses, limitOfList);
    for (std::size_t index = 0; index < addresses.size(); ++index)
        addServer(candidates, addresses[index], names[index], chosen);
    return candidates;
}

void printAsJson(const std::vector<Candidate>& candidates) {
    rapidjson::StringBuffer buffer;
    PrettyWriter json(buffer);
    json.SetIndent(' ', 2);
    json.StartArray();
    for (const Candidate& candidate : candidates) {
        json.StartObject();
        writeMember(json, "choice", toText(candidate.choice));
        writeMember(json, "chosen", candidate.chosen);
        if (const auto* const served = std::get_if<ServedModel>(&candidate.choice)) {
            writeMember(json, "address", served->address);
            writeMember(json, "model", served->model.empty() ? std::nullopt : std::optional(served->model));
            writeMember(json, "problem", candidate.problem);
        }
        json.EndObject();
    }
    json.EndArray();
    print(buffer);
}

void printForPeople(const std::vector<Candidate>& candidates) {
    for (const Candidate& candidate : candidates) {
        const std::string line = std::string(candidate.chosen ? "[x] " : "[ ] ") + toText(candidate.choice) +
                                 (candidate.problem ? " (" + *candidate.problem + ")" : "");
        std::puts(onOneLine(line).c_str());
    }
}

/// How the chosen model fares.
struct Status {
    PreferredLanguageModel preferred;
    bool reachable = false;
    std::optional<std::string> model = std::nullopt;   ///< which one of a server answers
    std::optional<std::string> problem = std::nullopt; ///< why none does
};

Status statusOf(const PreferredLanguageModel& preferred) {
    const auto* const served = std::get_if<ServedModel>(&preferred.choice);
    if (served == nullptr)
        return {preferred, std::holds_alternative<EmbeddedModel>(preferred.choice)};
    const Names names = namesOf({served->address}, limitOfStatus).front();
    if (!names)
        return {preferred, false, std::nullopt, names.error().message};
    if (served->model.empty())
        return {preferred, true, names->front()};
    if (isAmong(*names, served->model))
        return {preferred, true, served->model};
    return {preferred, true, std::nullopt, "it has no model \"" + served->model + "\""};
}

void printAsJson(const Status& status) {
    const auto nameOf = [](Source source) {
        switch (source) {
        case Source::Default:
            return "default";
        case Source::Preferences:
            return "preferences";
        case Source::Environment:
            return "environment";
        }
        return "";
    };
    rapidjson::StringBuffer buffer;
    PrettyWriter json(buffer);
    json.SetIndent(' ', 2);
    json.StartObject();
    writeMember(json, "choice", toText(status.preferred.choice));
    writeMember(json, "source", std::string(nameOf(status.preferred.source)));
    writeMember(json, "reachable", status.reachable);
    writeMember(json, "model", status.model);
    writeMember(json, "problem", status.problem);
    json.EndObject();
    print(buffer);
}

void printRow(std::string_view label, std::string_view text) {
    std::printf("%-16s%s\n", std::string(label).c_str(), onOneLine(text).c_str());
}

void printForPeople(const Status& status) {
    const auto described = [](Source source) {
        switch (source) {
        case Source::Default:
            return "default";
        case Source::Preferences:
            return "quillo model use";
        case Source::Environment:
            return "QUILLO_LANGUAGE_MODEL";
        }
        return "";
    };
    printRow("choice", toText(status.preferred.choice));
    printRow("chosen by", described(status.preferred.source));
    if (std::holds_alternative<ServedModel>(status.preferred.choice))
        printRow("reachable", status.reachable ? "yes" : "no");
    if (status.model)
        printRow("model", *status.model);
    if (status.problem)
        printRow("problem", *status.problem);
}

std::string typedChoice(const Arguments& arguments) {
    return (arguments.has("schema-in-prompt") ? "--schema-in-prompt " : "") + arguments.text(1);
}

ExitCode use(const Arguments& arguments) {
    const LanguageModelChoice choice = *readLanguageModelChoice(typedChoice(arguments));
    return change(control::UseModel{toText(choice)}, [&](const Tasks&) {
        std::puts(onOneLine(toText(choice)).c_str());
        const auto* const served = std::get_if<ServedModel>(&choice);
        if (served != nullptr && !isOnThisMachine(served->address))
            std::printf("That is not on this machine: texts of tasks will be sent there%s.\n",
                        served->address.starts_with("https:") ? "" : ", for everybody on the way to read");
    });
}

} // namespace

std::optional<std::string> objectionToModel(const Arguments& arguments) {
    const std::string& what = arguments.words().front();
    const bool uses = what == "use";
    if (!uses && what != "list" && what != "status")
        return "cannot \"" + what + "\" a language model";
    if (!uses && arguments.words().size() > 1)
        return "unexpected \"" + arguments.words()[1] + "\"";
    if (!uses && arguments.has("schema-in-prompt"))
        return "--schema-in-prompt is for use";
    if (!uses)
        return std::nullopt;
    if (arguments.words().size() == 1)
        return "something is missing";
    if (arguments.has("json"))
        return "--json is for list and status";
    const Result<LanguageModelChoice> choice = readLanguageModelChoice(typedChoice(arguments));
    return choice ? std::nullopt : std::optional(choice.error().message);
}

ExitCode model(const Arguments& arguments) {
    const std::string& what = arguments.words().front();
    if (what == "use")
        return use(arguments);
    const auto session = Session::look();
    if (!session)
        return failed(session.error());
    const PreferredLanguageModel preferred = preferredLanguageModel(&(*session)->preferences());
    const auto show = [&](const auto& shown) {
        if (arguments.has("json"))
            printAsJson(shown);
        else
            printForPeople(shown);
    };
    if (what == "list")
        show(candidatesBeside(preferred.choice));
    else
        show(statusOf(preferred));
    return ExitCode::Done;
}

} // namespace quillo::cli
