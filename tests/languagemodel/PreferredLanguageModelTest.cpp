#include "languagemodel/PreferredLanguageModel.h"

#include "support/CapturedLog.h"
#include "support/EnvironmentVariable.h"
#include "support/InMemoryKeyValueStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillo {
namespace {

using support::EnvironmentVariable;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Source = PreferredLanguageModel::Source;

struct PreferredLanguageModelTest : testing::Test {
    std::string preferred() { return toText(preferredLanguageModel(&preferences).choice); }
    Source source() { return preferredLanguageModel(&preferences).source; }

    EnvironmentVariable unset{"QUILLO_LANGUAGE_MODEL", ""};
    support::CapturedLog log;
    support::InMemoryPreferences preferences;
};

TEST_F(PreferredLanguageModelTest, IsTheEmbeddedOneAtFirst) {
    EXPECT_EQ(preferred(), "embedded");
    EXPECT_EQ(source(), Source::Default);
}

TEST_F(PreferredLanguageModelTest, IsKept) {
    ASSERT_TRUE(preferLanguageModel(preferences, "localhost:8080/v1 small"));
    EXPECT_EQ(preferences.text("Quillo.linux.languageModel"), "http://localhost:8080 small");
    EXPECT_EQ(preferred(), "http://localhost:8080 small");
    EXPECT_EQ(source(), Source::Preferences);
    EXPECT_FALSE(preferLanguageModel(preferences, "something else"));
    EXPECT_EQ(preferred(), "http://localhost:8080 small");
    ASSERT_TRUE(preferLanguageModel(preferences, "none"));
    EXPECT_EQ(preferred(), "none");
}

TEST_F(PreferredLanguageModelTest, IsTheEmbeddedOneWhereNothingCanBeRead) {
    preferences.set(preference_keys::languageModel, std::string("nonsense"));
    EXPECT_EQ(preferred(), "embedded");
    preferences.set(preference_keys::languageModel, std::int64_t{7});
    EXPECT_EQ(preferred(), "embedded");
    EXPECT_EQ(source(), Source::Default);
}

TEST_F(PreferredLanguageModelTest, IsThatOfTheEnvironmentForARun) {
    ASSERT_TRUE(preferLanguageModel(preferences, "http://localhost:8080"));
    for (const char* wanted : {"none", "embedded", "http://127.0.0.1:1 m"}) {
        const EnvironmentVariable variable("QUILLO_LANGUAGE_MODEL", wanted);
        EXPECT_EQ(preferred(), wanted);
        EXPECT_EQ(source(), Source::Environment);
    }
    EXPECT_EQ(preferred(), "http://localhost:8080");
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(PreferredLanguageModelTest, IsNoneWhereTheEnvironmentCannotBeRead) {
    const EnvironmentVariable variable("QUILLO_LANGUAGE_MODEL", "gpt");
    EXPECT_EQ(preferred(), "none");
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("QUILLO_LANGUAGE_MODEL: \"gpt\" is no address")));
}

} // namespace
} // namespace quillo
