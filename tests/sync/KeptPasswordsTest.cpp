#include "sync/KeptPasswords.h"

#include "support/CapturedLog.h"
#include "sync/TriedPassword.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

namespace quillo {
namespace {

const WebDavFolder cloud{"https://cloud.example.org/dav", "me"};
const WebDavFolder elsewhere{"https://example.org", "me"};

/// One that does as it is told, in memory.
class ScriptedKeyring final : public Keyring {
public:
    Result<std::optional<std::string>> find(const WebDavFolder& place, Ask ask) override {
        if (locked) {
            ++(ask == Ask::Yes ? prompts : silent);
            return Error{"it is locked"};
        }
        return has(place) ? std::optional(kept.at(place.url)) : std::nullopt;
    }
    bool has(const WebDavFolder& place) override { return kept.contains(place.url); }
    Result<bool> keep(const WebDavFolder& place, const std::string& password) override {
        if (locked)
            return Error{"it is locked"};
        if (there)
            kept[place.url] = password;
        return there;
    }
    Outcome forget(const WebDavFolder& place) override {
        kept.erase(place.url);
        return success();
    }

    std::map<std::string, std::string> kept;
    bool locked = false;
    bool there = true;
    int prompts = 0;
    int silent = 0;
};

class KeptPasswordsTest : public testing::Test {
protected:
    std::string find(const WebDavFolder& place = cloud) {
        const auto found = passwords_.find(place);
        return !found ? found.error().message : found->value_or("none");
    }

    support::CapturedLog log_;
    ScriptedKeyring keyring_;
    KeptPasswords passwords_{[this] { return &keyring_; }};
};

TEST_F(KeptPasswordsTest, AreInTheKeyring) {
    EXPECT_EQ(find(), "none");
    EXPECT_EQ(*passwords_.keep(cloud, "secret"), Passwords::Kept::ForGood);
    EXPECT_EQ(keyring_.kept.at(cloud.url), "secret");
    EXPECT_EQ(find(), "secret");
    EXPECT_EQ(find(elsewhere), "none");
    EXPECT_TRUE(passwords_.isInKeyring(cloud));
    EXPECT_TRUE(passwords_.forget(cloud));
    EXPECT_EQ(find(), "none");
}

TEST_F(KeptPasswordsTest, AreInMemoryWithoutOne) {
    keyring_.there = false;
    EXPECT_EQ(*passwords_.keep(cloud, "secret"), Passwords::Kept::UntilTheEnd);
    EXPECT_EQ(find(), "secret");
    EXPECT_FALSE(passwords_.isInKeyring(cloud));
    EXPECT_TRUE(passwords_.forget(cloud));
    EXPECT_EQ(find(), "none");

    KeptPasswords alone([] { return nullptr; });
    EXPECT_EQ(*alone.keep(cloud, "secret"), Passwords::Kept::UntilTheEnd);
    EXPECT_EQ(**alone.find(cloud), "secret");
    EXPECT_FALSE(alone.isInKeyring(cloud));
    EXPECT_TRUE(alone.forget(cloud));
    EXPECT_TRUE(log_.lines().empty());
}

TEST_F(KeptPasswordsTest, WhatWasGivenLastCounts) {
    keyring_.kept[cloud.url] = "old";
    keyring_.locked = true;
    EXPECT_EQ(*passwords_.keep(cloud, "new"), Passwords::Kept::UntilTheEnd);
    EXPECT_EQ(find(), "new");
    keyring_.locked = false;
    EXPECT_EQ(find(), "new");
    EXPECT_EQ(*passwords_.keep(cloud, "newer"), Passwords::Kept::ForGood);
    EXPECT_EQ(find(), "newer");
    for (const std::string& line : log_.lines())
        EXPECT_EQ(line.find("new"), std::string::npos) << line;
}

TEST_F(KeptPasswordsTest, WhoHasRefusedIsNotAskedAgain) {
    keyring_.locked = true;
    EXPECT_EQ(find(), "it is locked");
    EXPECT_EQ(find(), "it is locked");
    EXPECT_EQ(keyring_.prompts, 1);
    keyring_.locked = false;
    EXPECT_EQ(*passwords_.keep(elsewhere, "secret"), Passwords::Kept::ForGood);
    EXPECT_EQ(find(), "none");
}

TEST_F(KeptPasswordsTest, NobodyIsAskedByWhoMayNot) {
    keyring_.locked = true;
    KeptPasswords quiet([this] { return &keyring_; }, Keyring::Ask::No);
    EXPECT_FALSE(quiet.find(cloud));
    EXPECT_FALSE(quiet.find(cloud));
    EXPECT_EQ(std::pair(keyring_.prompts, keyring_.silent), std::pair(0, 2));
    quiet.mayAsk();
    EXPECT_FALSE(quiet.find(cloud));
    EXPECT_EQ(keyring_.prompts, 1);
}

TEST_F(KeptPasswordsTest, AreBounded) {
    for (const std::string& password :
         {std::string(), std::string(longestPassword + 1, 'x'), std::string("secret\nsecond"),
          std::string("a\0b", 3), std::string("secret\r"), std::string("\xFF")}) {
        const auto kept = passwords_.keep(cloud, password);
        ASSERT_FALSE(kept);
        EXPECT_EQ(kept.error().message.find("secret"), std::string::npos);
        keyring_.kept[cloud.url] = password;
        EXPECT_EQ(find(), "none") << "somebody else has put it there";
    }
    EXPECT_TRUE(passwords_.keep(cloud, std::string(longestPassword, 'x')));
}

TEST_F(KeptPasswordsTest, OneThatIsTriedIsNotKept) {
    const auto behind = std::make_shared<KeptPasswords>([this] { return &keyring_; });
    TriedPassword tried(cloud, "tried", behind);
    EXPECT_EQ(**tried.find(cloud), "tried");
    EXPECT_FALSE(tried.find(elsewhere)->has_value());
    EXPECT_TRUE(keyring_.kept.empty());
    EXPECT_FALSE(behind->find(cloud)->has_value());
    EXPECT_TRUE(tried.keep(cloud, "tried"));
    tried.end();
    EXPECT_TRUE(behind->keep(cloud, "changed"));
    EXPECT_EQ(**tried.find(cloud), "changed");
}

} // namespace
} // namespace quillo
