#include "languagemodel/PreferredLanguageModel.h"

#include "base/Log.h"

#include <cstdlib>
#include <optional>
#include <string>

namespace quillo {

namespace {

constexpr const char* variable = "QUILLO_LANGUAGE_MODEL";

} // namespace

PreferredLanguageModel preferredLanguageModel(const Preferences* preferences) {
    using Source = PreferredLanguageModel::Source;
    const char* const wanted = std::getenv(variable);
    if (wanted != nullptr && *wanted != '\0') {
        const Result<LanguageModelChoice> choice = readLanguageModelChoice(wanted);
        if (choice)
            return {*choice, Source::Environment};
        log(std::string("no language model is asked, because of ") + variable + ": " +
            choice.error().message);
        return {NoModel{}, Source::Environment};
    }
    const auto kept =
        preferences != nullptr ? preferences->text(preference_keys::languageModel) : std::nullopt;
    if (kept) {
        if (const Result<LanguageModelChoice> choice = readLanguageModelChoice(*kept))
            return {*choice, Source::Preferences};
    }
    return {EmbeddedModel{}, Source::Default};
}

Outcome preferLanguageModel(Preferences& preferences, std::string_view text) {
    const Result<LanguageModelChoice> choice = readLanguageModelChoice(text);
    if (!choice)
        return choice.error();
    preferences.set(preference_keys::languageModel, toText(*choice));
    return success();
}

} // namespace quillo
