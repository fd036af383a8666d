#include "webdav/Listing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace quillo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string laptop = "6F9619FF-8B86-D011-B42D-00CF4FC964FF.json";

std::vector<ListedFile> filesIn(const std::string& xml) {
    const auto files = readListing(xml);
    EXPECT_TRUE(files) << (files ? "" : files.error().message) << '\n' << xml;
    return files ? *files : std::vector<ListedFile>{};
}

std::string complaintAbout(const std::string& xml) {
    const auto files = readListing(xml);
    return files ? "none" : files.error().message;
}

TEST(Listing, IsReadAsLighttpdGivesIt) {
    EXPECT_THAT(filesIn(R"(<?xml version="1.0" encoding="utf-8"?>
<D:multistatus xmlns:D="DAV:" xmlns:ns0="urn:uuid:c2f41010-65b3-11d1-a29f-00aa00c14882/">
<D:response>
<D:href>http://127.0.0.1:18091/quillo/v1/</D:href>
<D:propstat>
<D:prop>
<D:resourcetype><D:collection/></D:resourcetype><D:getlastmodified ns0:dt="dateTime.rfc1123">Sun, 22 Nov 2026 16:08:01 GMT</D:getlastmodified></D:prop>
<D:status>HTTP/1.1 200 OK</D:status>
</D:propstat>
</D:response>
<D:response>
<D:href>http://127.0.0.1:18091/quillo/v1/)" +
                        laptop + R"(</D:href>
<D:propstat>
<D:prop>
<D:getcontentlength>275</D:getcontentlength><D:getetag>"1885432"</D:getetag><D:getlastmodified ns0:dt="dateTime.rfc1123">Sun, 22 Nov 2026 16:08:01 GMT</D:getlastmodified></D:prop>
<D:status>HTTP/1.1 200 OK</D:status>
</D:propstat>
<D:propstat>
<D:prop>
<resourcetype/>
</D:prop>
<D:status>HTTP/1.1 404 Not Found</D:status>
</D:propstat>
</D:response>
</D:multistatus>
)"),
                ElementsAre(ListedFile{laptop, "\"1885432\"", "275", "Sun, 22 Nov 2026 16:08:01 GMT"}));
}

TEST(Listing, IsReadAsApacheGivesIt) {
    EXPECT_THAT(filesIn(R"(<?xml version="1.0" encoding="utf-8"?>
<D:multistatus xmlns:D="DAV:" xmlns:ns0="DAV:">
<D:response xmlns:lp1="DAV:" xmlns:lp2="http://apache.org/dav/props/">
<D:href>/dav/quillo/v1/</D:href>
<D:propstat>
<D:prop>
<lp1:resourcetype><D:collection/></lp1:resourcetype>
<lp1:getlastmodified>Sun, 22 Nov 2026 16:08:01 GMT</lp1:getlastmodified>
<lp1:getetag>"1000-64a1"</lp1:getetag>
</D:prop>
<D:status>HTTP/1.1 200 OK</D:status>
</D:propstat>
<D:propstat>
<D:prop>
<ns0:getcontentlength/>
</D:prop>
<D:status>HTTP/1.1 404 Not Found</D:status>
</D:propstat>
</D:response>
<D:response xmlns:lp1="DAV:" xmlns:lp2="http://apache.org/dav/props/">
<D:href>/dav/quillo/v1/)" +
                        laptop +
                        R"(</D:href>
<D:propstat>
<D:prop>
<lp1:resourcetype/>
<lp1:getcontentlength>275</lp1:getcontentlength>
<lp1:getlastmodified>Sun, 22 Nov 2026 16:08:01 GMT</lp1:getlastmodified>
<lp1:getetag>W/"113-64a1"</lp1:getetag>
</D:prop>
<D:status>HTTP/1.1 200 OK</D:status>
</D:propstat>
</D:response>
</D:multistatus>
)"),
                ElementsAre(ListedFile{laptop, "W/\"113-64a1\"", "275", "Sun, 22 Nov 2026 16:08:01 GMT"}));
}

TEST(Listing, IsReadAsRcloneAndNextcloudGiveIt) {
    EXPECT_THAT(
        filesIn(
            R"(<?xml version="1.0" encoding="UTF-8"?><D:multistatus xmlns:D="DAV:"><D:response><D:href>/)" +
            laptop +
            R"(</D:href><D:propstat><D:prop><D:resourcetype></D:resourcetype><D:getetag>"18f3a113"</D:getetag>)"
            R"(<D:getcontentlength>275</D:getcontentlength><D:getlastmodified>Sun, 22 Nov 2026 16:08:01 GMT</D:getlastmodified>)"
            R"(</D:prop><D:status>HTTP/1.1 200 OK</D:status></D:propstat></D:response></D:multistatus>)"),
        ElementsAre(ListedFile{laptop, "\"18f3a113\"", "275", "Sun, 22 Nov 2026 16:08:01 GMT"}));
    EXPECT_THAT(
        filesIn(
            R"(<?xml version="1.0"?>
<d:multistatus xmlns:d="DAV:" xmlns:s="http://sabredav.org/ns" xmlns:oc="http://owncloud.org/ns" xmlns:nc="http://nextcloud.org/ns"><d:response><d:href>/remote.php/dav/files/me/quillo/v1/</d:href><d:propstat><d:prop><d:getetag>&quot;5f&quot;</d:getetag><d:resourcetype><d:collection/></d:resourcetype></d:prop><d:status>HTTP/1.1 200 OK</d:status></d:propstat><d:propstat><d:prop><d:getcontentlength/></d:prop><d:status>HTTP/1.1 404 Not Found</d:status></d:propstat></d:response><d:response><d:href>/remote.php/dav/files/me/quillo/v1/)" +
            laptop +
            R"(</d:href><d:propstat><d:prop><d:getetag>&quot;65a1&quot;</d:getetag><d:getcontentlength>275</d:getcontentlength><d:getlastmodified>Sun, 22 Nov 2026 16:08:01 GMT</d:getlastmodified><d:resourcetype/></d:prop><d:status>HTTP/1.1 200 OK</d:status></d:propstat></d:response></d:multistatus>)"),
        ElementsAre(ListedFile{laptop, "\"65a1\"", "275", "Sun, 22 Nov 2026 16:08:01 GMT"}));
}

std::string listingOf(const std::string& href, const std::string& properties = "") {
    return R"(<multistatus xmlns="DAV:"><response><href>)" + href + "</href><propstat><prop>" + properties +
           "</prop><status>HTTP/1.1 200 OK</status></propstat></response></multistatus>";
}

TEST(Listing, ReadsNamesInEveryForm) {
    for (const auto& [href, name] :
         std::vector<std::pair<std::string, std::string>>{{"/a/b", "b"},
                                                          {"https://server:8443/a/b", "b"},
                                                          {"b", "b"},
                                                          {"\n  /a/b\n ", "b"},
                                                          {"/a/%62%20c%2Fd", "b c/d"},
                                                          {"/a/%C3%A9", "\xC3\xA9"}})
        EXPECT_EQ(filesIn(listingOf(href)).front().name, name) << href;
    for (const char* href : {"", "/", "/a/", "/a/%", "/a/%4", "/a/%zz", "/a/% 4", "/a/b%"})
        EXPECT_THAT(filesIn(listingOf(href)), IsEmpty()) << href;
    // An address in a property is none of a file.
    EXPECT_EQ(filesIn(listingOf("/a/b", "<x><href>/c/d</href></x>")).front().name, "b");
}

TEST(Listing, SkipsFoldersAndWhatTheServerDoesNotHave) {
    EXPECT_THAT(filesIn(listingOf("/a/b", "<resourcetype><collection/></resourcetype>")), IsEmpty());
    EXPECT_THAT(
        filesIn(R"(<multistatus xmlns="DAV:"><response><href>/a</href><propstat><prop><getetag>1</getetag>)"
                R"(</prop><status>HTTP/1.1 403 Forbidden</status></propstat></response></multistatus>)"),
        ElementsAre(ListedFile{"a", "", "", ""}));
    EXPECT_THAT(filesIn(R"(<multistatus xmlns="DAV:"/>)"), IsEmpty());
}

TEST(Listing, RefusesOtherDocuments) {
    for (const std::string& bytes :
         {std::string(), std::string("{}"), std::string("<multistatus/>"), std::string("\0\0", 2),
          std::string("<html/>"), std::string(R"(<multistatus xmlns="DAV:">)"),
          std::string(R"(<multistatus xmlns="http://server/"/>)"),
          std::string("<!DOCTYPE html><html><body>Log in</body></html>")})
        EXPECT_NE(complaintAbout(bytes), "none") << bytes;
    EXPECT_EQ(complaintAbout("<html/>"), "it is another document");
}

TEST(Listing, RefusesDeclarations) {
    std::string laughs = "<?xml version=\"1.0\"?><!DOCTYPE lolz [<!ENTITY l0 \"lol\">";
    for (int level = 1; level < 10; ++level) {
        laughs += "<!ENTITY l" + std::to_string(level) + " \"";
        for (int time = 0; time < 10; ++time)
            laughs += "&l" + std::to_string(level - 1) + ";";
        laughs += "\">";
    }
    laughs += "]>" + listingOf("&l9;");
    EXPECT_EQ(complaintAbout(laughs), "it has a document type");
    EXPECT_EQ(complaintAbout("<!DOCTYPE x SYSTEM \"file:///etc/passwd\">" + listingOf("/a")),
              "it has a document type");
    EXPECT_NE(complaintAbout(listingOf("&unknown;")), "none");
}

TEST(Listing, HasBounds) {
    std::string deep = R"(<multistatus xmlns="DAV:">)";
    for (int level = 0; level < 1'000'000; ++level)
        deep += "<a>";
    EXPECT_EQ(complaintAbout(deep), "it is nested too deeply");
    EXPECT_EQ(complaintAbout(listingOf(std::string(10'000, 'x'))), "a text in it is too long");
    EXPECT_EQ(complaintAbout(listingOf(std::string(10 << 20, 'x'))), "it is too large");
    std::string many = R"(<multistatus xmlns="DAV:">)";
    while (many.size() < largestListing - 100)
        many += "<response><href>/a</href></response>";
    many += "</multistatus>";
    EXPECT_GT(filesIn(many).size(), 100'000U);
}

} // namespace
} // namespace quillo
