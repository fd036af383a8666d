#include "sync/SyncPlace.h"

#include "support/InMemoryKeyValueStore.h"
#include "sync/ThisDevice.h"

#include <gtest/gtest.h>

#include <string>

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
