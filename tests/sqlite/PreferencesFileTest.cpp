#include "sqlite/PreferencesFile.h"

#include "ChildProcess.h"
#include "OpenPreferences.h"
#include "PreferencesFolder.h"
#include "RawDatabase.h"
#include "support/CapturedLog.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <fstream>

namespace quillo::support {

namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

unsigned modeOf(const std::filesystem::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

/// A file laid out as ours, with the rows that are given as SQL.
void makeFile(const PreferencesFolder& folder, const std::string& rows, const std::string& version = "1") {
    RawDatabase database(folder.file());
    ASSERT_EQ(database.run("PRAGMA application_id=0x514C4C4F; PRAGMA user_version=" + version +
                           "; CREATE TABLE preferences(key TEXT PRIMARY KEY, type TEXT NOT NULL, value);" +
                           rows),
              SQLITE_OK);
}

TEST(PreferencesFile, IsWhatOtherProgramsExpect) {
    const PreferencesFolder folder;
    const auto preferences = openPreferences(folder.path());
    preferences->apply({{"d", Value(Data("\x01\x02"s))},
                        {"i", Value(std::int64_t{7})},
                        {"r", Value(7.0)},
                        {"b", Value(true)},
                        {"t", Value("seven"s)}});
    ASSERT_EQ(flushError(*preferences), "");
    RawDatabase other(folder.file());
    EXPECT_EQ(other.value("SELECT sql FROM sqlite_schema WHERE name = 'preferences'"),
              "CREATE TABLE preferences(key TEXT PRIMARY KEY, type TEXT NOT NULL, value)");
    EXPECT_EQ(other.value("SELECT count(*) FROM sqlite_schema WHERE sql IS NOT NULL"), "1");
    EXPECT_EQ(other.value("PRAGMA application_id"), std::to_string(0x514C4C4F));
    EXPECT_EQ(other.value("PRAGMA user_version"), "1");
    EXPECT_EQ(other.value("PRAGMA journal_mode"), "wal");
    EXPECT_EQ(other.value("PRAGMA page_size"), "32768");
    EXPECT_EQ(other.value("PRAGMA encoding"), "UTF-8");
    EXPECT_EQ(other.value("PRAGMA integrity_check"), "ok");
    EXPECT_THAT(other.column("SELECT key || ' ' || type || ' ' || typeof(value) || ' ' || quote(value)"
                             " FROM preferences ORDER BY key"),
                ElementsAre("b boolean integer 1", "d data blob X'0102'", "i integer integer 7",
                            "r double real 7.0", "t string text 'seven'"));
}

TEST(PreferencesFile, IsClosedToOthers) {
    const PreferencesFolder outer;
    const std::filesystem::path folder = outer.path() / "share" / "quillo";
    const mode_t before = umask(0);
    {
        const auto preferences = openPreferences(folder);
        preferences->set("a", true);
        ASSERT_EQ(flushError(*preferences), "");
        EXPECT_EQ(modeOf(outer.path() / "share"), 0700U);
        EXPECT_EQ(modeOf(folder), 0700U);
        for (const char* name : {"preferences.sqlite", "preferences.sqlite-wal", "preferences.sqlite-shm"})
            EXPECT_EQ(modeOf(folder / name), 0600U) << name;
    }
    umask(before);
    EXPECT_FALSE(std::filesystem::exists(folder / "preferences.sqlite-wal"))
        << "one whole file when nobody uses it";
}

TEST(PreferencesFile, ClosesAFileThatWasOpenToOthers) {
    const PreferencesFolder folder;
    makeFile(folder, "");
    std::filesystem::permissions(folder.file(), std::filesystem::perms(0644));
    const auto preferences = openPreferences(folder.path());
    preferences->set("a", true);
    ASSERT_EQ(flushError(*preferences), "");
    for (const char* name : {"preferences.sqlite", "preferences.sqlite-wal", "preferences.sqlite-shm"})
        EXPECT_EQ(modeOf(folder.path() / name), 0600U) << name;
}

TEST(PreferencesFile, MayBeALinkToElsewhere) {
    const PreferencesFolder folder;
    const PreferencesFolder elsewhere;
    openPreferences(elsewhere.path())->set("a", "there"s);
    std::filesystem::create_symlink(elsewhere.file(), folder.file());
    const auto preferences = openPreferences(folder.path());
    EXPECT_EQ(preferences->text("a"), "there");
    EXPECT_THAT(folder.names(), ElementsAre("preferences.sqlite"));
}

TEST(PreferencesFile, AnEmptyFileBecomesOurs) {
    const PreferencesFolder folder;
    PreferencesFolder::write(folder.file(), "");
    openPreferences(folder.path())->set("a", true);
    EXPECT_EQ(RawDatabase(folder.file()).value("PRAGMA application_id"), std::to_string(0x514C4C4F));
}

TEST(PreferencesFile, ADatabaseWithoutTablesBecomesOurs) {
    const PreferencesFolder folder;
    ASSERT_EQ(RawDatabase(folder.file()).run("PRAGMA journal_mode=WAL"), SQLITE_OK);
    ASSERT_GT(std::filesystem::file_size(folder.file()), 0U);
    EXPECT_EQ(openPreferences(folder.path(), Access::ReadOnly)->value("a"), std::nullopt);
    openPreferences(folder.path())->set("a", true);
    EXPECT_EQ(openPreferences(folder.path())->boolean("a"), true);
}

TEST(PreferencesFile, WhatDoesNotFitItsTypeIsAbsentAndStays) {
    const PreferencesFolder folder;
    makeFile(folder, "INSERT INTO preferences VALUES"
                     "('data is text', 'data', 'text'),"
                     "('data is null', 'data', NULL),"
                     "('integer is text', 'integer', '1'),"
                     "('integer is real', 'integer', 1.0),"
                     "('double is integer', 'double', 1),"
                     "('double is infinite', 'double', 9e999),"
                     "('boolean is two', 'boolean', 2),"
                     "('boolean is negative', 'boolean', -1),"
                     "('boolean is text', 'boolean', 'true'),"
                     "('string is blob', 'string', x'41'),"
                     "('string is null', 'string', NULL),"
                     "('word is unknown', 'date', 1),"
                     "('word is capital', 'Integer', 1),"
                     "('word is empty', '', 1),"
                     "('word is blob', x'696E7465676572', 1),"
                     "('large but no data', 'string', zeroblob(100000)),"
                     "(NULL, 'integer', 1),"
                     "(x'6B', 'integer', 1),"
                     "('fits', 'integer', 1)");
    const std::string everything =
        "SELECT quote(key) || quote(type) || quote(value) FROM preferences ORDER BY rowid";
    const std::vector<std::string> before = RawDatabase(folder.file()).column(everything);
    ASSERT_EQ(before.size(), 19U);
    {
        const auto preferences = openPreferences(folder.path());
        for (const std::string& key :
             RawDatabase(folder.file()).column("SELECT key FROM preferences WHERE key <> 'fits'"))
            EXPECT_EQ(preferences->value(key), std::nullopt) << key;
        EXPECT_EQ(preferences->value("k"), std::nullopt);
        EXPECT_EQ(preferences->integer("fits"), 1);
        preferences->set("other", true);
    }
    std::vector<std::string> expected = before;
    expected.push_back("'other''boolean'1");
    EXPECT_EQ(RawDatabase(folder.file()).column(everything), expected);

    openPreferences(folder.path())->set("double is integer", 2.5);
    EXPECT_EQ(openPreferences(folder.path())->real("double is integer"), 2.5);
    openPreferences(folder.path())->remove("boolean is two");
    EXPECT_EQ(
        RawDatabase(folder.file()).value("SELECT count(*) FROM preferences WHERE key = 'boolean is two'"),
        "0");
}

TEST(PreferencesFile, LeavesANewerFormatAsItIs) {
    for (const char* version : {"2", "2147483647"}) {
        const PreferencesFolder folder;
        makeFile(folder, "INSERT INTO preferences VALUES('a', 'integer', 1)", version);
        const auto before = folder.contents();
        for (const Access access : {Access::ReadWrite, Access::ReadOnly})
            EXPECT_THAT(openingError(folder.path(), access), HasSubstr("newer Quillo"));
        EXPECT_EQ(folder.contents(), before);
    }
}

/// The newer version may stand in the log alone, left there by a process that died.
TEST(PreferencesFile, LeavesTheLogOfANewerFormatAsItIs) {
    const PreferencesFolder folder;
    makeFile(folder, "PRAGMA journal_mode=WAL");
    ChildProcess child([&] {
        RawDatabase database(folder.file());
        database.run("PRAGMA wal_autocheckpoint=0; PRAGMA user_version=2;"
                     "INSERT INTO preferences VALUES('a', 'integer', 1)");
        return ::kill(getpid(), SIGKILL);
    });
    child.wait();
    const auto before = folder.contents();
    ASSERT_GT(before.at("preferences.sqlite-wal").bytes.size(), 0U);
    for (const Access access : {Access::ReadWrite, Access::ReadOnly})
        EXPECT_THAT(openingError(folder.path(), access), HasSubstr("newer Quillo"));
    auto after = folder.contents();
    EXPECT_EQ(after.at("preferences.sqlite"), before.at("preferences.sqlite"));
    EXPECT_EQ(after.at("preferences.sqlite-wal"), before.at("preferences.sqlite-wal"));
    EXPECT_EQ(RawDatabase(folder.file()).value("SELECT value FROM preferences"), "1");
}

TEST(PreferencesFile, LeavesOtherDatabasesAsTheyAre) {
    for (const char* sql : {"CREATE TABLE bookmarks(url TEXT)", "PRAGMA application_id=12345",
                            "PRAGMA user_version=1; CREATE TABLE t(a)",
                            "CREATE TABLE preferences(key TEXT PRIMARY KEY, type TEXT NOT NULL, value)",
                            "PRAGMA application_id=0x514C4C4F; CREATE TABLE t(a)",
                            "PRAGMA application_id=0x514C4C4F; PRAGMA user_version=-1"}) {
        const PreferencesFolder folder;
        ASSERT_EQ(RawDatabase(folder.file()).run(sql), SQLITE_OK);
        const auto before = folder.contents();
        for (const Access access : {Access::ReadWrite, Access::ReadOnly})
            EXPECT_THAT(openingError(folder.path(), access), HasSubstr("does not hold Quillo's preferences"))
                << sql;
        EXPECT_EQ(folder.contents(), before) << sql;
    }
}

TEST(PreferencesFile, RefusesATableLaidOutDifferently) {
    for (const char* sql : {"CREATE TABLE other(a)",
                            "CREATE TABLE preferences(name TEXT PRIMARY KEY, type TEXT NOT NULL, value)",
                            "CREATE TABLE preferences(key TEXT PRIMARY KEY, value)",
                            "CREATE TABLE t(key, type, value); CREATE VIEW preferences AS SELECT * FROM t"}) {
        const PreferencesFolder folder;
        const std::string ours = "PRAGMA application_id=0x514C4C4F; PRAGMA user_version=1;";
        ASSERT_EQ(RawDatabase(folder.file()).run(ours + sql), SQLITE_OK);
        const auto before = folder.contents();
        for (const Access access : {Access::ReadOnly, Access::ReadWrite})
            EXPECT_THAT(openingError(folder.path(), access), HasSubstr("not laid out")) << sql;
        EXPECT_EQ(folder.contents(), before) << sql;
    }
}

TEST(PreferencesFile, RunsNothingThatTheFileBrings) {
    const PreferencesFolder folder;
    makeFile(folder, "CREATE TABLE log(a); CREATE TRIGGER t AFTER INSERT ON preferences BEGIN"
                     " INSERT INTO log VALUES(1); DELETE FROM preferences; END");
    openPreferences(folder.path())->set("a", true);
    EXPECT_EQ(RawDatabase(folder.file()).value("SELECT count(*) FROM log"), "0");
    EXPECT_EQ(openPreferences(folder.path())->boolean("a"), true);
}

TEST(PreferencesFile, CanBeReadByOthersMeanwhile) {
    const PreferencesFolder folder;
    const auto preferences = openPreferences(folder.path());
    RawDatabase other(folder.file());
    preferences->set("a", std::int64_t{1});
    ASSERT_EQ(flushError(*preferences), "");
    ASSERT_EQ(other.run("BEGIN"), SQLITE_OK);
    EXPECT_EQ(other.value("SELECT value FROM preferences"), "1");
    preferences->set("a", std::int64_t{2}); // The reader does not keep it from being written,
    EXPECT_EQ(flushError(*preferences), "");
    EXPECT_EQ(other.value("SELECT value FROM preferences"), "1"); // nor sees it before its next look.
    ASSERT_EQ(other.run("COMMIT"), SQLITE_OK);
    EXPECT_EQ(other.value("SELECT value FROM preferences"), "2");
}

TEST(PreferencesFile, AFolderThatIsAFileIsAnError) {
    const PreferencesFolder folder;
    PreferencesFolder::write(folder.path() / "quillo", "");
    EXPECT_THAT(openingError(folder.path() / "quillo"), HasSubstr("not a folder"));
    EXPECT_THAT(openingError(folder.path() / "quillo" / "deeper"), HasSubstr("cannot"));
    std::filesystem::create_directories(folder.path() / "second" / "preferences.sqlite");
    EXPECT_THAT(openingError(folder.path() / "second"), HasSubstr("cannot be opened"));
    EXPECT_THAT(openingError(folder.path() / "second", Access::ReadOnly), HasSubstr("cannot be opened"));
}

} // namespace

} // namespace quillo::support
