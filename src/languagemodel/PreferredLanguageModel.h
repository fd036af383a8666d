/// Which language model the user has chosen.
#pragma once

#include "base/Result.h"
#include "languagemodel/LanguageModelChoice.h"
#include "ports/Preferences.h"

#include <string_view>

namespace quillo {

struct PreferredLanguageModel {
    enum class Source { Default, Preferences, Environment };

    LanguageModelChoice choice;
    Source source = Source::Default;
};

/// $QUILLO_LANGUAGE_MODEL, if it is set and not empty: what cannot be read there means none, and the log says
/// so. Else what the preferences say; the embedded one where there are none, or they say nothing, or nothing
/// that can be read.
PreferredLanguageModel preferredLanguageModel(const Preferences* preferences);

/// Keeps the choice that the text is, see readLanguageModelChoice(). An error, and nothing is changed, where
/// it is none.
Outcome preferLanguageModel(Preferences& preferences, std::string_view text);

} // namespace quillo
