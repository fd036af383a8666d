#include "sync/SyncPlace.h"

#include "support/InMemoryKeyValueStore.h"
#include "sync/ThisDevice.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace quillo {
namespace {

TEST(SyncPlace, IsReadAsItIsWritten) {
    for (const SyncPlace& place : {SyncPlace(NoPlace{}), SyncPlace(SyncedFolder{"/home/me/My Sync/é"}),
                                   SyncPlace(WebDavFolder{"https://cloud.example/dav/My%20Files", "Zoë K"}),
                                   SyncPlace(WebDavFolder{"http://127.0.0.1:8080", ""})}) {
        const auto read = readSyncPlace(toText(place));
        ASSERT_TRUE(read);
        EXPECT_EQ(*read, place);
    }
    EXPECT_EQ(*readSyncPlace("folder /a/./b/../c/"), SyncPlace(SyncedFolder{"/a/c"}));
    EXPECT_EQ(*readSyncPlace("folder /"), SyncPlace(SyncedFolder{"/"}));
}

TEST(SyncPlace, RefusesOtherTexts) {
    for (const std::string& text :
         {std::string(), std::string("on"), std::string("folder"), std::string("folder "),
          std::string("folder sync"), std::string("/sync"), std::string("folder /\xFF"),
          std::string("folder /a\0b", 11), std::string("webdav "), std::string("webdav ftp://server")})
        EXPECT_FALSE(readSyncPlace(text)) << text;
}

TEST(SyncPlace, OnAServerIsTheSameHoweverItIsTyped) {
    for (const auto& [typed, place] : std::initializer_list<std::pair<const char*, WebDavFolder>>{
             {"webdav HTTPS://Cloud.Example.org/DAV/me@example.org//",
              {"https://cloud.example.org/DAV/me@example.org", ""}},
             {"webdav https://cloud.example.org/ me", {"https://cloud.example.org", "me"}},
             {"webdav https://cloud.example.org:8443/a%20b me@example.org",
              {"https://cloud.example.org:8443/a%20b", "me@example.org"}},
             {"webdav http://[::1]:8080/.hidden ", {"http://[::1]:8080/.hidden", ""}},
             {"webdav http://LocalHost two  blanks", {"http://localhost", "two  blanks"}}}) {
        const auto read = readSyncPlace(typed);
        ASSERT_TRUE(read) << typed << ": " << read.error().message;
        EXPECT_EQ(*read, SyncPlace(place)) << typed;
    }
}

TEST(SyncPlace, OnAServerIsRefusedWhereItCouldMeanSomethingElse) {
    for (const std::string& url :
         {std::string("https://"), std::string("https://a/?x"), std::string("https://a/#x"),
          std::string("https://a/%"), std::string("https://a/%2"), std::string("https://a/%2g"),
          std::string("https://a/../b"), std::string("https://a/."), std::string("https://a/b/.."),
          std::string("https://a:0"), std::string("https://caf\xC3\xA9"), std::string("cloud"),
          std::string("https://a/\n"), "https://a/" + std::string(3000, 'x')})
        EXPECT_EQ(readSyncPlace("webdav " + url).error().message,
                  "that is no URL of a folder, such as https://example.org/dav/My%20Files")
            << url;
    for (const std::string& user : {std::string("me:you"), std::string("a\tb"), std::string("a\0b", 3),
                                    std::string("\xFF"), std::string("a\x7F"), std::string(2000, 'x')})
        EXPECT_FALSE(readSyncPlace("webdav https://a " + user)) << user;
}

TEST(SyncPlace, OnAnotherMachineIsReachedInPrivate) {
    for (const char* url :
         {"http://cloud.example.org", "http://10.0.0.1/dav", "http://localhost.example.org"})
        EXPECT_EQ(
            readSyncPlace(std::string("webdav ") + url).error().message,
            "on the way to another machine everybody could read along: the URL has to begin with https://");
}

TEST(SyncPlace, NeverRepeatsAPasswordThatSomebodyHasPutThere) {
    for (const char* text :
         {"webdav https://me:secret@a", "webdav https://me:secret@a/b", "webdav https://me:secret",
          "webdav me:secret@a", "webdav https://a?password=secret", "webdav https://a me:secret",
          "webdav https://a/ b\nsecret", "webdavs secret", "https://me:secret@a", "secret"}) {
        const auto read = readSyncPlace(text);
        ASSERT_FALSE(read) << text;
        EXPECT_EQ(read.error().message.find("secret"), std::string::npos) << read.error().message;
    }
    EXPECT_EQ(readSyncPlace("webdav https://me:secret@a/b").error().message,
              "no user and no password belong into the URL: say --user, and the password is asked for");
}

TEST(SyncPlace, IsNoneWhereNothingElseWasChosen) {
    support::InMemoryPreferences preferences;
    EXPECT_EQ(chosenSyncPlace(preferences), SyncPlace(NoPlace{}));
    preferences.set(preference_keys::syncPlace, std::string("nonsense"));
    EXPECT_EQ(chosenSyncPlace(preferences), SyncPlace(NoPlace{}));
    preferences.set(preference_keys::syncPlace, true);
    EXPECT_EQ(chosenSyncPlace(preferences), SyncPlace(NoPlace{}));
    preferences.set(preference_keys::syncPlace, std::string("folder /sync"));
    EXPECT_EQ(chosenSyncPlace(preferences), SyncPlace(SyncedFolder{"/sync"}));
}

TEST(ThisDevice, StaysTheSameOnItsMachine) {
    support::InMemoryPreferences preferences;
    const Device first = thisDevice(preferences, "machine");
    EXPECT_EQ(thisDevice(preferences, "machine"), first);
    EXPECT_EQ(preferences.writes(), 1);
    EXPECT_EQ(preferences.text(preference_keys::syncDevice)->find("machine"), std::string::npos);
}

TEST(ThisDevice, IsAnotherOneOnAnotherMachine) {
    support::InMemoryPreferences preferences;
    const Device first = thisDevice(preferences, "machine");
    const Device copy = thisDevice(preferences, "another machine");
    EXPECT_NE(copy.id, first.id);
    EXPECT_EQ(thisDevice(preferences, "another machine").id, copy.id);
}

TEST(ThisDevice, IsANewOneWhereTheOldOneCannotBeRead) {
    for (const char* kept :
         {"", "6F9619FF", "6F9619FF-8B86-D011-B42D-00CF4FC964FF", "6F9619FF-8B86-D011-B42D-00CF4FC964FF 1"}) {
        support::InMemoryPreferences preferences;
        preferences.set(preference_keys::syncDevice, std::string(kept));
        EXPECT_NE(thisDevice(preferences, "machine").id.toString(), "6F9619FF-8B86-D011-B42D-00CF4FC964FF");
        EXPECT_EQ(preferences.writes(), 2);
    }
}

} // namespace
} // namespace quillo
