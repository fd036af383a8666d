#include "cli/UsersLanguageModel.h"

#include "base/DataFolder.h"
#include "classifier/EmbeddedClassifier.h"
#include "languagemodel/MakeLanguageModel.h"
#include "languagemodel/PreferredLanguageModel.h"
#include "sqlite/SqlitePreferences.h"

#include <memory>

namespace quillo::cli {

ChosenLanguageModel usersLanguageModel(Executor& mainExecutor) {
    return ChosenLanguageModel([&mainExecutor] {
        std::unique_ptr<SqlitePreferences> preferences;
        if (const auto folder = dataFolder()) {
            if (auto opened = SqlitePreferences::open(*folder, SqlitePreferences::Access::ReadOnly))
                preferences = std::move(*opened);
        }
        return makeLanguageModel(preferredLanguageModel(preferences.get()).choice, mainExecutor,
                                 makeEmbeddedClassifier);
    });
}

} // namespace quillo::cli
