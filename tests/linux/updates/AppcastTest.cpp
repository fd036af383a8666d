#include "linux/updates/Appcast.h"

#include "support/SignedReleases.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace quillo {
namespace {

using support::feedOf;
using support::ReleaseEntry;

const std::string signature(86, 'A');

ReleaseEntry release(const std::string& build) {
    return {.build = build,
            .url = "https://example.org/quillo.tar.gz",
            .length = 10,
            .signature = signature + "=="};
}

std::optional<std::vector<AppcastItem>> read(const std::string& feed) {
    return readAppcast(QByteArray::fromStdString(feed));
}

/// The feed with one release, with a text in it replaced.
std::string changed(const std::string& from, const std::string& to) {
    std::string feed = feedOf(std::vector{release("20")});
    const auto at = feed.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return feed.replace(at, from.size(), to);
}

TEST(Appcast, ReadsReleases) {
    const auto items = read(feedOf(std::vector{release("20"), release("1.9")}));
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 2U);
    const AppcastItem& item = items->front();
    EXPECT_EQ(item.build, BuildNumber::parse("20"));
    EXPECT_EQ(item.version, QStringLiteral("2.0"));
    EXPECT_EQ(item.notes, QStringLiteral("Faster."));
    EXPECT_EQ(item.archive, QUrl(QStringLiteral("https://example.org/quillo.tar.gz")));
    EXPECT_EQ(item.length, 10U);
    EXPECT_EQ(item.signature.size(), 64);
    EXPECT_EQ(item.published.toSecsSinceEpoch(), 1772704800);
}

TEST(Appcast, ReadsVersionsWhereOldFeedsHaveThem) {
    const auto items =
        read("<rss xmlns:s='http://www.andymatuschak.org/xml-namespaces/sparkle'><channel><item>"
             "<enclosure url='https://example.org/a' length='1' s:version='7' s:edSignature='" +
             signature + "=='/></item></channel></rss>");
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 1U);
    EXPECT_EQ(items->front().version, QStringLiteral("7"));
}

TEST(Appcast, PassesOverWhatIsIncompleteOrForOthers) {
    for (const std::string& feed :
         {changed("<sparkle:version>20<", "<sparkle:version>twenty<"),
          changed("length=\"10\"", "length=\"0\""), changed("length=\"10\"", "length=\"-10\""),
          changed("length=\"10\"", ""), changed(signature, "AAAA"), changed("https://example.org/", "/"),
          changed("<sparkle:version>", "<sparkle:channel>beta</sparkle:channel><sparkle:version>"),
          changed("<enclosure ", "<enclosure sparkle:os=\"macos\" "),
          changed("http://www.andymatuschak.org/", "http://www.example.org/")}) {
        const auto items = read(feed);
        ASSERT_TRUE(items) << feed;
        EXPECT_TRUE(items->empty()) << feed;
    }
    EXPECT_EQ(read(changed("<enclosure ", "<enclosure sparkle:os=\"linux\" "))->size(), 1U);
}

TEST(Appcast, RefusesWhatIsNoFeed) {
    for (const std::string& feed :
         {std::string(), std::string("nothing"), std::string("<html/>"), std::string("<rss/>"),
          changed("<rss", "<!DOCTYPE rss [<!ENTITY a \"aa\">]><rss"), changed("</channel>", ""),
          changed("</rss>", "</rss><rss/>"), changed("<title>Quillo", "<title>&unknown;")})
        EXPECT_FALSE(read(feed)) << feed;
}

TEST(Appcast, ReadsDeepNestsWithoutGettingLost) {
    std::string deep;
    for (int depth = 0; depth < 100'000; ++depth)
        deep += "<a>";
    std::string up;
    for (int depth = 0; depth < 100'000; ++depth)
        up += "</a>";
    const auto items = read(changed("<title>Quillo</title>", "<description>" + deep + up + "</description>"));
    ASSERT_TRUE(items);
    EXPECT_EQ(items->size(), 1U);
    const auto inNotes = read(changed("<![CDATA[Faster.]]>", "Fast" + deep + up + "er"));
    ASSERT_TRUE(inNotes);
    EXPECT_EQ(inNotes->front().notes, QStringLiteral("Faster"));
}

} // namespace
} // namespace quillo
