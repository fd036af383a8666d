#include "base/DataFolder.h"

#include "support/EnvironmentVariable.h"

#include <gtest/gtest.h>

namespace quillo {
namespace {

using support::EnvironmentVariable;

TEST(DataFolder, FollowsItsOwnVariableFirst) {
    const EnvironmentVariable own("QUILLO_DATA_DIR", "/somewhere/else");
    const EnvironmentVariable xdg("XDG_DATA_HOME", "/xdg");
    EXPECT_EQ(*dataFolder(), "/somewhere/else");
}

TEST(DataFolder, LiesBelowTheUsersDataFolder) {
    const EnvironmentVariable own("QUILLO_DATA_DIR", "");
    const EnvironmentVariable xdg("XDG_DATA_HOME", "/xdg");
    EXPECT_EQ(*dataFolder(), "/xdg/quillo");
}

TEST(DataFolder, IgnoresARelativeDataHome) {
    const EnvironmentVariable own("QUILLO_DATA_DIR", "");
    const EnvironmentVariable xdg("XDG_DATA_HOME", "relative");
    const EnvironmentVariable home("HOME", "/home/someone");
    EXPECT_EQ(*dataFolder(), "/home/someone/.local/share/quillo");
}

TEST(DataFolder, AsksTheUserDatabaseWhereThereIsNoHome) {
    const EnvironmentVariable own("QUILLO_DATA_DIR", "");
    const EnvironmentVariable xdg("XDG_DATA_HOME", "");
    const EnvironmentVariable home("HOME", "");
    const auto folder = dataFolder();
    ASSERT_TRUE(folder);
    EXPECT_TRUE(folder->is_absolute());
    EXPECT_EQ(folder->filename(), "quillo");
}

} // namespace
} // namespace quillo
