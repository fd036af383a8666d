#include "OpenPreferences.h"
#include "PreferencesFolder.h"
#include "RawDatabase.h"
#include "support/CapturedLog.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

namespace quillo::support {

namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

constexpr std::size_t pageSize = 32768;

/// Two large values, and what belongs to one of them.
void makePreferences(const PreferencesFolder& folder) {
    openPreferences(folder.path())
        ->apply({{"list", Value(Data(largeBytes(1)))},
                 {"list.stamp", Value(1.0)},
                 {"list.stamps", Value(2.0)},
                 {"listing", Value("of something else"s)},
                 {"daily", Value(Data(largeBytes(2)))},
                 {"lifetime", Value(std::int64_t{7})}});
}

/// Where in the file the page starts that holds this piece of large data: behind the number of the page that
/// follows.
std::size_t pageWith(const std::string& file, const std::string& piece) {
    const std::size_t place = file.find(piece);
    EXPECT_NE(place, std::string::npos);
    return place / pageSize * pageSize;
}

/// Makes the chain of pages that holds `bytes` lead to nowhere half way.
void breakChain(const PreferencesFolder& folder, const std::string& bytes) {
    std::string file = PreferencesFolder::read(folder.file());
    const std::size_t page = pageWith(file, bytes.substr(bytes.size() / 2, 16));
    file.replace(page, 4, "\xFF\xFF\xFF\xF0");
    PreferencesFolder::write(folder.file(), file);
}

TEST(Damage, AFileThatIsNoDatabaseIsMovedAside) {
    for (const std::string& bytes : {"hello"s, std::string(100'000, '\0'), largeBytes(5), "SQLite format 3"s,
                                     "SQLite format 3\0"s + std::string(200, '\xFF')}) {
        const PreferencesFolder folder;
        PreferencesFolder::write(folder.file(), bytes);
        const CapturedLog log;
        {
            const auto preferences = openPreferences(folder.path());
            EXPECT_THAT(folder.damaged(), ElementsAre(Pair("", bytes)));
            preferences->set("a", true);
        }
        EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("is damaged; it is kept as")));
        EXPECT_EQ(openPreferences(folder.path())->boolean("a"), true);
        EXPECT_THAT(folder.damaged(), ElementsAre(Pair("", bytes)));
    }
}

TEST(Damage, WhatLiesBesideMovesWithIt) {
    const PreferencesFolder folder;
    PreferencesFolder::write(folder.file(), "no database");
    PreferencesFolder::write(folder.file().string() + "-wal", "no log");
    const CapturedLog log;
    openPreferences(folder.path())->set("a", true);
    auto damaged = folder.damaged();
    EXPECT_EQ(damaged[""], "no database");
    EXPECT_EQ(damaged["-wal"], "no log");
    EXPECT_EQ(openPreferences(folder.path())->boolean("a"), true);
}

TEST(Damage, ATruncatedFileIsMovedAside) {
    for (const std::size_t kept : {pageSize / 2, pageSize, 2 * pageSize, 3 * pageSize + 100}) {
        const PreferencesFolder folder;
        makePreferences(folder);
        const std::string whole = PreferencesFolder::read(folder.file());
        PreferencesFolder::write(folder.file(), whole.substr(0, kept));
        const CapturedLog log;
        EXPECT_THAT(openingError(folder.path(), Access::ReadOnly), HasSubstr("it is damaged"));
        EXPECT_EQ(Bytes(PreferencesFolder::read(folder.file())), whole.substr(0, kept))
            << "only looking moves nothing";
        EXPECT_THAT(folder.damaged(), IsEmpty());
        EXPECT_EQ(openPreferences(folder.path())->value("lifetime"), std::nullopt);
        EXPECT_THAT(folder.damaged(), ElementsAre(Pair("", whole.substr(0, kept))));
    }
}

TEST(Damage, ABrokenTableIsMovedAside) {
    const PreferencesFolder folder;
    makePreferences(folder);
    std::string file = PreferencesFolder::read(folder.file());
    const std::size_t page = pageWith(file, "lifetime");
    file.replace(page, 8, 8, '\xEE');
    PreferencesFolder::write(folder.file(), file);
    const CapturedLog log;
    EXPECT_THAT(openingError(folder.path(), Access::ReadOnly), HasSubstr("it is damaged"));
    EXPECT_EQ(openPreferences(folder.path())->value("lifetime"), std::nullopt);
    EXPECT_THAT(folder.damaged(), ElementsAre(Pair("", file)));
}

/// One that another program made and that is not in write-ahead mode: not even that is changed before it is
/// moved.
TEST(Damage, ABrokenFileInAnotherModeIsMovedAsideAsItIs) {
    const PreferencesFolder folder;
    ASSERT_EQ(RawDatabase(folder.file())
                  .run("PRAGMA page_size=512; PRAGMA application_id=0x514C4C4F; PRAGMA user_version=1;"
                       "CREATE TABLE preferences(key TEXT PRIMARY KEY, type TEXT NOT NULL, value);"
                       "INSERT INTO preferences VALUES('list', 'data', zeroblob(5000))"),
              SQLITE_OK);
    std::string file = PreferencesFolder::read(folder.file());
    file.replace(512, 8, 8, '\xEE');
    PreferencesFolder::write(folder.file(), file);
    const CapturedLog log;
    openPreferences(folder.path())->set("a", true);
    EXPECT_THAT(folder.damaged(), ElementsAre(Pair("", file)));
    EXPECT_EQ(openPreferences(folder.path())->boolean("a"), true);
}

TEST(Damage, MovingAsideTwiceOverwritesNothing) {
    const PreferencesFolder folder;
    const CapturedLog log;
    for (const char* bytes : {"first", "second", "third"}) {
        PreferencesFolder::write(folder.file(), bytes);
        openPreferences(folder.path());
    }
    std::vector<Bytes> kept;
    for (const auto& [name, bytes] : folder.contents()) {
        if (name.starts_with("preferences.damaged-"))
            kept.push_back(bytes);
    }
    EXPECT_THAT(kept, testing::UnorderedElementsAre(Bytes("first"), Bytes("second"), Bytes("third")));
}

TEST(Damage, TheLogOfADeletedFileIsKept) {
    const PreferencesFolder folder;
    PreferencesFolder::write(folder.file().string() + "-wal", "the last changes");
    const CapturedLog log;
    openPreferences(folder.path())->set("a", true);
    EXPECT_THAT(folder.damaged(), ElementsAre(Pair("-wal", "the last changes")));
    EXPECT_EQ(openPreferences(folder.path())->boolean("a"), true);
}

TEST(Damage, ShowingWhenDataIsReadLosesThatDataOnly) {
    const PreferencesFolder folder;
    makePreferences(folder);
    breakChain(folder, largeBytes(1));
    const std::string file = PreferencesFolder::read(folder.file());
    const CapturedLog log;
    for (int round = 0; round < 2; ++round) {
        const auto preferences = openPreferences(folder.path());
        EXPECT_EQ(preferences->value("list"), std::nullopt);
        EXPECT_EQ(preferences->value("list.stamp"), std::nullopt) << "it told something about the list";
        EXPECT_EQ(preferences->value("list.stamps"), std::nullopt);
        EXPECT_EQ(preferences->text("listing"), "of something else");
        EXPECT_EQ(preferences->integer("lifetime"), 7);
        EXPECT_EQ(preferences->data("daily"), Data(largeBytes(2)));
        EXPECT_EQ(flushError(*preferences), "");
    }
    EXPECT_THAT(folder.damaged(), ElementsAre(Pair("", file)));
    EXPECT_THAT(log.lines(), ElementsAre(HasSubstr("is damaged; it is kept as")));
}

TEST(Damage, ShowingOnWritingLosesNothingThatIsKnown) {
    const PreferencesFolder folder;
    makePreferences(folder);
    breakChain(folder, largeBytes(1));
    const std::string file = PreferencesFolder::read(folder.file());
    const CapturedLog log;
    {
        const auto preferences = openPreferences(folder.path());
        preferences->apply(
            {{"list", Value(Data(largeBytes(3)))}, {"list.stamp", Value(3.0)}, {"lifetime", std::nullopt}});
        EXPECT_EQ(flushError(*preferences), "");
        EXPECT_EQ(preferences->data("list"), Data(largeBytes(3)));
    }
    EXPECT_THAT(folder.damaged(), ElementsAre(Pair("", file)));
    const auto preferences = openPreferences(folder.path());
    EXPECT_EQ(preferences->data("list"), Data(largeBytes(3)));
    EXPECT_EQ(preferences->real("list.stamp"), 3.0);
    EXPECT_EQ(preferences->real("list.stamps"), 2.0);
    EXPECT_EQ(preferences->data("daily"), Data(largeBytes(2)));
    EXPECT_EQ(preferences->value("lifetime"), std::nullopt);
    EXPECT_EQ(RawDatabase(folder.file()).value("PRAGMA integrity_check"), "ok");
}

/// The log of the damaged file holds the last changes: it goes with it.
TEST(Damage, ShowingWithChangesInTheLogKeepsTheLog) {
    const PreferencesFolder folder;
    makePreferences(folder);
    const CapturedLog log;
    const auto preferences = openPreferences(folder.path());
    preferences->set("lifetime", std::int64_t{8});
    ASSERT_EQ(flushError(*preferences), "");
    breakChain(folder, largeBytes(1));
    const auto before = folder.contents();
    EXPECT_EQ(preferences->value("list"), std::nullopt);
    auto damaged = folder.damaged();
    EXPECT_EQ(damaged[""], before.at("preferences.sqlite"));
    EXPECT_EQ(damaged["-wal"], before.at("preferences.sqlite-wal"));
    EXPECT_EQ(preferences->integer("lifetime"), 8);
    EXPECT_EQ(preferences->data("daily"), Data(largeBytes(2)));
}

TEST(Damage, ShowingWhileOnlyLookingMovesNothing) {
    const PreferencesFolder folder;
    makePreferences(folder);
    breakChain(folder, largeBytes(1));
    const auto before = folder.contents();
    const CapturedLog log;
    {
        const auto preferences = openPreferences(folder.path(), Access::ReadOnly);
        EXPECT_EQ(preferences->value("list"), std::nullopt);
        EXPECT_THAT(flushError(*preferences), HasSubstr("cannot be read: it is damaged"));
        EXPECT_EQ(preferences->real("list.stamp"), 1.0);
        EXPECT_EQ(preferences->data("daily"), Data(largeBytes(2)));
    }
    EXPECT_EQ(folder.contents(), before);
}

/// Whatever happened to the bytes: no crash, and they are still there unless they were good enough to be
/// opened.
RC_GTEST_PROP(DamageProperty, AnyBytesAreSurvivedAndKept, ()) {
    const PreferencesFolder folder;
    makePreferences(folder);
    std::string file = PreferencesFolder::read(folder.file());
    // Mostly where SQLite keeps its own numbers: the first pages and the starts of pages.
    const int count = *rc::gen::inRange(1, 12);
    for (int flip = 0; flip < count; ++flip) {
        const std::size_t page = *rc::gen::inRange<std::size_t>(0, file.size() / pageSize);
        const std::size_t offset = *rc::gen::oneOf(rc::gen::inRange<std::size_t>(0, 110),
                                                   rc::gen::inRange<std::size_t>(0, pageSize));
        file[page * pageSize + offset] = *rc::gen::arbitrary<char>();
    }
    file.resize(*rc::gen::oneOf(rc::gen::just(file.size()), rc::gen::inRange<std::size_t>(1, file.size())));
    PreferencesFolder::write(folder.file(), file);
    const CapturedLog log;
    {
        const auto looking = SqlitePreferences::open(folder.path(), Access::ReadOnly);
        if (looking)
            (*looking)->value("list");
    }
    RC_ASSERT(folder.contents() == (std::map<std::string, Bytes>{{"preferences.sqlite", file}}));
    auto opened = SqlitePreferences::open(folder.path(), Access::ReadWrite);
    if (!opened) {
        RC_ASSERT(PreferencesFolder::read(folder.file()) == file);
        return;
    }
    if (const auto damaged = folder.damaged(); !damaged.empty())
        RC_ASSERT(damaged.at("") == file);
    auto& preferences = **opened;
    preferences.value("list");
    preferences.value("daily");
    preferences.apply({{"list", Value(Data(largeBytes(4)))}, {"list.stamp", Value(4.0)}});
    if (!flushError(preferences).empty())
        return;
    // What was written into a page that was broken already may come out broken, but then that is noticed.
    const std::size_t names = folder.names().size();
    opened->reset();
    *opened = openPreferences(folder.path());
    if (folder.names().size() > names)
        return;
    RC_ASSERT((*opened)->data("list") == Data(largeBytes(4)) || folder.names().size() > names);
    RC_ASSERT((*opened)->real("list.stamp") == 4.0);
}

} // namespace

} // namespace quillo::support
