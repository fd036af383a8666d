#include "sqlite/SqlitePreferences.h"

#include "FaultySystemCalls.h"
#include "OpenPreferences.h"
#include "PreferencesFolder.h"
#include "RawDatabase.h"
#include "support/CapturedLog.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <map>

namespace quillo::support {

namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;

/// Equal to the last bit: -0.0 is not 0.0.
bool identical(const std::optional<Value>& left, const std::optional<Value>& right) {
    if (!left || !right || left->index() != right->index())
        return !left && !right;
    if (const auto* number = std::get_if<double>(&*left))
        return std::bit_cast<std::uint64_t>(*number) ==
               std::bit_cast<std::uint64_t>(std::get<double>(*right));
    return *left == *right;
}

TEST(SqlitePreferences, KeepsEveryType) {
    const std::map<std::string, Value> values{
        {"data", Data("\x00\xFF{}"s)},
        {"data.empty", Data()},
        {"data.large", Data(largeBytes())},
        {"data.at.bound", Data(largeBytes(2, preferences_table::largeDataBytes))},
        {"data.above.bound", Data(largeBytes(3, preferences_table::largeDataBytes + 1))},
        {"integer", std::int64_t{42}},
        {"integer.zero", std::int64_t{0}},
        {"integer.one", std::int64_t{1}},
        {"integer.smallest", std::numeric_limits<std::int64_t>::min()},
        {"integer.largest", std::numeric_limits<std::int64_t>::max()},
        {"double", 1741161600.25},
        {"double.whole", 3.0},
        {"double.minus.zero", -0.0},
        {"double.smallest", std::numeric_limits<double>::denorm_min()},
        {"double.largest", std::numeric_limits<double>::max()},
        {"double.lowest", std::numeric_limits<double>::lowest()},
        {"boolean.true", true},
        {"boolean.false", false},
        {"string", "Grüße 🐸"s},
        {"string.empty", ""s},
        {"string.nul", "a\0b\0"s},
        {"string.long", std::string(200'000, 'x')},
        {"", "under the empty key"s},
        {"key\0with nul"s, "under a key with NUL"s},
    };
    const PreferencesFolder folder;
    {
        const auto preferences = openPreferences(folder.path());
        for (const auto& [key, value] : values)
            preferences->set(key, value);
        for (const auto& [key, value] : values)
            EXPECT_TRUE(identical(preferences->value(key), value)) << key << " before it is on disk";
        EXPECT_EQ(flushError(*preferences), "");
        for (const auto& [key, value] : values)
            EXPECT_TRUE(identical(preferences->value(key), value)) << key << " when it is on disk";
    }
    for (const Access access : {Access::ReadOnly, Access::ReadWrite}) {
        const auto preferences = openPreferences(folder.path(), access);
        for (const auto& [key, value] : values)
            EXPECT_TRUE(identical(preferences->value(key), value)) << key << " when opened again";
        EXPECT_EQ(preferences->value("key"), std::nullopt);
    }
}

TEST(SqlitePreferences, WritesLargeDataInPiecesOnce) {
    const PreferencesFolder folder;
    const auto text = std::make_shared<const std::string>(largeBytes(4, 3'000'000));
    const std::string_view all = *text;
    const Data data(text, {all.substr(0, 1), all.substr(1, 999'999), "", all.substr(1'000'000)});
    {
        const auto preferences = openPreferences(folder.path());
        preferences->set("list", data);
        ASSERT_TRUE(preferences->flush());
        const auto log = std::filesystem::file_size(folder.path() / "preferences.sqlite-wal");
        EXPECT_GE(log, text->size());
        EXPECT_LE(log, text->size() + text->size() / 10);
        EXPECT_EQ(preferences->data("list"), Data(*text));
    }
    EXPECT_EQ(openPreferences(folder.path())->data("list"), Data(*text));
}

TEST(SqlitePreferences, ReplacesAndRemoves) {
    const PreferencesFolder folder;
    {
        const auto preferences = openPreferences(folder.path());
        preferences->apply(
            {{"a", Value(std::int64_t{1})}, {"b", Value(true)}, {"c", Value(Data(largeBytes()))}});
        EXPECT_EQ(flushError(*preferences), "");
        preferences->apply(
            {{"a", Value("now text"s)}, {"b", std::nullopt}, {"c", std::nullopt}, {"d", std::nullopt}});
        EXPECT_EQ(preferences->text("a"), "now text");
        EXPECT_EQ(preferences->integer("a"), std::nullopt);
        EXPECT_EQ(preferences->value("b"), std::nullopt);
        EXPECT_EQ(preferences->value("c"), std::nullopt);
    }
    EXPECT_THAT(RawDatabase(folder.file()).column("SELECT key || '=' || value FROM preferences"),
                ElementsAre("a=now text"));
}

TEST(SqlitePreferences, OfTwoChangesToOneKeyTheLaterCounts) {
    const PreferencesFolder folder;
    openPreferences(folder.path())->apply({{"a", Value(true)}, {"a", std::nullopt}, {"a", Value("last"s)}});
    EXPECT_EQ(openPreferences(folder.path())->text("a"), "last");
}

TEST(SqlitePreferences, ShowsWhatIsPendingBeforeItIsOnDisk) {
    const PreferencesFolder folder;
    const auto preferences = openPreferences(folder.path());
    RawDatabase other(folder.file());
    ASSERT_EQ(other.run("BEGIN IMMEDIATE"), SQLITE_OK); // Nothing can be committed meanwhile.
    preferences->apply({{"list", Value(Data(largeBytes()))}, {"stamp", Value(1.5)}});
    EXPECT_EQ(preferences->data("list"), Data(largeBytes()));
    EXPECT_EQ(preferences->real("stamp"), 1.5);
    EXPECT_EQ(other.value("SELECT count(*) FROM preferences"), "0");
    ASSERT_EQ(other.run("ROLLBACK"), SQLITE_OK);
    EXPECT_EQ(flushError(*preferences), "");
    EXPECT_EQ(other.value("SELECT count(*) FROM preferences"), "2");
}

TEST(SqlitePreferences, RefusesWhatItCannotKeepAndSaysSo) {
    const PreferencesFolder folder;
    const CapturedLog log;
    const auto preferences = openPreferences(folder.path());
    preferences->apply({{"list", Value("before"s)}, {"stamp", Value(1.0)}});
    for (const double number : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        preferences->apply({{"list", Value("after"s)}, {"stamp", Value(number)}});
        EXPECT_THAT(flushError(*preferences), HasSubstr("no finite number"));
        EXPECT_EQ(flushError(*preferences), "") << "said once";
        EXPECT_EQ(preferences->text("list"), "before") << "neither of the two is taken";
        EXPECT_EQ(preferences->real("stamp"), 1.0);
    }
    EXPECT_EQ(log.lines().size(), 3U);
}

TEST(SqlitePreferences, RefusesTooLargeValues) {
    const PreferencesFolder folder;
    const CapturedLog log;
    const auto preferences = openPreferences(folder.path());
    preferences->set("list", Data(std::string(SqlitePreferences::maximumBytes + 1, '\0')));
    EXPECT_THAT(flushError(*preferences), HasSubstr("larger than"));
    EXPECT_EQ(preferences->value("list"), std::nullopt);
}

TEST(SqlitePreferences, DoesNotReadLargeDataOnOpening) {
    const PreferencesFolder folder;
    openPreferences(folder.path())
        ->apply({{"list", Value(Data(largeBytes(1, 18'000'000)))}, {"stamp", Value(1.0)}});
    const FaultySystemCalls calls;
    const auto preferences = openPreferences(folder.path());
    EXPECT_EQ(preferences->real("stamp"), 1.0);
    EXPECT_GT(calls.bytesRead(), 0U) << "or nothing was counted";
    EXPECT_LT(calls.bytesRead(), 200'000U);
    EXPECT_EQ(preferences->data("list"), Data(largeBytes(1, 18'000'000)));
    EXPECT_GT(calls.bytesRead(), 18'000'000U);
}

TEST(SqlitePreferences, ManySmallChangesBecomeFewTransactions) {
    const PreferencesFolder folder;
    const auto preferences = openPreferences(folder.path());
    RawDatabase other(folder.file());
    ASSERT_EQ(other.run("BEGIN IMMEDIATE"), SQLITE_OK);
    for (std::int64_t number = 0; number < 1000; ++number)
        preferences->set("number", number);
    ASSERT_EQ(other.run("ROLLBACK"), SQLITE_OK);
    EXPECT_EQ(flushError(*preferences), "");
    EXPECT_EQ(other.value("SELECT value FROM preferences WHERE key = 'number'"), "999");
    // Each transaction would have put at least one page of 32 KiB into the log.
    EXPECT_LT(std::filesystem::file_size(folder.file().string() + "-wal"), 300'000U);
}

TEST(SqlitePreferences, MayWriteAllOfItInOneTransactionWhenAsked) {
    const PreferencesFolder folder;
    const auto preferences = openPreferences(folder.path());
    preferences->writeOnFlushOnly();
    RawDatabase other(folder.file());
    preferences->set("reminders", Data(largeBytes()));
    preferences->set("list", Data(largeBytes()));
    preferences->remove("list");
    preferences->set("stamp", 1.5);
    EXPECT_EQ(preferences->real("stamp"), 1.5);
    EXPECT_EQ(preferences->data("reminders"), Data(largeBytes()));
    EXPECT_EQ(preferences->data("nothing"), std::nullopt);
    EXPECT_EQ(other.value("SELECT count(*) FROM preferences"), "0");
    const std::string before = other.value("PRAGMA data_version");
    EXPECT_EQ(flushError(*preferences), "");
    EXPECT_EQ(other.value("SELECT count(*) FROM preferences"), "2");
    // Each commit of another connection counts.
    EXPECT_EQ(std::stoi(other.value("PRAGMA data_version")), std::stoi(before) + 1);
}

TEST(SqlitePreferences, WritesWhatWasNeverAskedForWhenItGoes) {
    const PreferencesFolder folder;
    auto preferences = openPreferences(folder.path());
    preferences->writeOnFlushOnly();
    preferences->set("stamp", 1.5);
    preferences.reset();
    EXPECT_EQ(openPreferences(folder.path())->real("stamp"), 1.5);
}

/// Any value, now and then one that is large.
rc::Gen<Value> arbitraryValue() {
    const auto finite = rc::gen::suchThat<double>([](double number) { return std::isfinite(number); });
    const auto large = rc::gen::map(rc::gen::arbitrary<unsigned>(), [](unsigned seed) {
        return Value(Data(largeBytes(seed, preferences_table::largeDataBytes - 1000 + seed % 2000)));
    });
    return rc::gen::oneOf(
        rc::gen::map<std::string>([](std::string bytes) { return Value(Data(std::move(bytes))); }),
        rc::gen::map<std::int64_t>([](std::int64_t number) { return Value(number); }),
        rc::gen::map(finite, [](double number) { return Value(number); }),
        rc::gen::map<bool>([](bool flag) { return Value(flag); }),
        rc::gen::map<std::string>([](std::string text) { return Value(std::move(text)); }), large);
}

RC_GTEST_PROP(SqlitePreferencesProperty, BehavesLikeAMap, ()) {
    const PreferencesFolder folder;
    std::map<std::string, Value> model;
    auto preferences = openPreferences(folder.path());
    const auto key = rc::gen::element("a"s, "b"s, "c"s, "c.stamp"s, "d\0"s, ""s);
    const int steps = *rc::gen::inRange(1, 40);
    for (int step = 0; step < steps; ++step) {
        switch (*rc::gen::weightedElement<int>({{6, 0}, {2, 1}, {1, 2}, {3, 3}})) {
        case 0: {
            std::vector<Change> changes;
            const int count = *rc::gen::inRange(0, 4);
            for (int change = 0; change < count; ++change) {
                Change made{*key, std::nullopt};
                if (*rc::gen::inRange(0, 4) == 0) {
                    model.erase(made.key);
                } else {
                    made.value = *arbitraryValue();
                    model.insert_or_assign(made.key, *made.value);
                }
                changes.push_back(std::move(made));
            }
            preferences->apply(std::move(changes));
            break;
        }
        case 1:
            RC_ASSERT(flushError(*preferences).empty());
            break;
        case 2:
            preferences.reset();
            preferences = openPreferences(folder.path());
            break;
        default: {
            const std::string asked = *key;
            const auto expected = model.find(asked);
            RC_ASSERT(identical(preferences->value(asked),
                                expected == model.end() ? std::nullopt : std::optional(expected->second)));
        }
        }
    }
    preferences.reset();
    preferences = openPreferences(folder.path(), Access::ReadOnly);
    for (const std::string& asked : {"a"s, "b"s, "c"s, "c.stamp"s, "d\0"s, ""s}) {
        const auto expected = model.find(asked);
        RC_ASSERT(identical(preferences->value(asked),
                            expected == model.end() ? std::nullopt : std::optional(expected->second)));
    }
    RC_ASSERT(RawDatabase(folder.file()).value("SELECT count(*) FROM preferences") ==
              std::to_string(model.size()));
}

} // namespace

} // namespace quillo::support
