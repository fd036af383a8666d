// The carrier and what speaks HTTP for it, against a server with all its moods (dav_server.py).
#include "sync/WebDavCarrier.h"

#include "model/TodoItemJson.h"
#include "modelservers/ServerProcess.h"
#include "support/CapturedLog.h"
#include "support/EnvironmentVariable.h"
#include "support/InMemoryPasswords.h"
#include "support/TodoItemBuilder.h"
#include "webdav/HttpWebDavServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace quillo {
namespace {

using namespace std::chrono_literals;
using support::ServerProcess;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Clock = std::chrono::steady_clock;

Device deviceOf(std::uint32_t number) {
    return {support::numberedId(number), "machine " + std::to_string(number), "Quillo"};
}

StampedBytes listOf(const std::string& title, double stamp) {
    const std::vector<TodoItem> items{support::Task(title).id(support::numberedId(99))};
    return {Data(*encodeStoredItems(items)), stamp};
}

Result<std::unique_ptr<WebDavServer>> speakHttp(const std::string& url) {
    return std::unique_ptr<WebDavServer>(std::make_unique<HttpWebDavServer>(url));
}

/// A device that has nothing else to do.
struct Computer {
    Computer(const std::string& url, std::uint32_t number, const std::string& user = "",
             WebDavCarrier::SetUp setUp = WebDavCarrier::SetUp::Yes)
        : carrier({url, user}, deviceOf(number), setUp, passwords, speakHttp) {}

    Exchange exchange() { return carrier.exchange(mirror); }
    Exchange exchange(const StampedBytes& list) {
        mirror.put(list);
        return exchange();
    }
    std::string complaint() {
        const Exchange made = exchange();
        return made.outcome ? "none" : made.outcome.error().message;
    }

    std::shared_ptr<support::InMemoryPasswords> passwords = std::make_shared<support::InMemoryPasswords>();
    WebDavCarrier carrier;
    Mirror mirror;
};

class WebDavCarrierTest : public testing::Test {
protected:
    /// What is in the way of an exchange where the server plays that part.
    std::string complaintAbout(const std::string& part) {
        Computer computer(server_.address(part), 1);
        return computer.exchange(listOf("milk", 10)).outcome ? "none" : computer.complaint();
    }

    /// The requests until one of that method, which is among them, as their methods and where they went.
    std::vector<std::string> requestsUntil(const std::string& method) {
        std::vector<std::string> requests;
        do {
            const std::string event = server_.nextEvent();
            const auto value = [&](const std::string& key) {
                const std::size_t at = event.find("\"" + key + "\": \"") + key.size() + 5;
                return event.substr(at, event.find('"', at) - at);
            };
            requests.push_back(value("method"));
        } while (requests.back() != method);
        return requests;
    }

    support::CapturedLog log_;
    ServerProcess server_{"webdav/dav_server.py"};
};

TEST_F(WebDavCarrierTest, BringsTheLatestListToEverybody) {
    for (const char* part : {"good", "weak", "no-etag", "no-date", "bare", "torn"}) {
        SCOPED_TRACE(part);
        Computer one(server_.address(part), 1);
        Computer two(server_.address(part), 2);
        EXPECT_TRUE(one.exchange(listOf("milk", 10)).outcome);
        two.exchange();
        const Exchange exchange = two.exchange(); // The first may have met half a file.
        EXPECT_TRUE(exchange.outcome);
        EXPECT_EQ(two.mirror.latest(), listOf("milk", 10));
        EXPECT_EQ(exchange.devices, (std::vector<FoundDevice>{{deviceOf(1), 10}}));
        two.exchange(listOf("bread", 20));
        one.exchange();
        EXPECT_EQ(one.exchange().devices.size(), 2U);
        EXPECT_EQ(one.mirror.latest(), listOf("bread", 20));
        EXPECT_TRUE(one.mirror.hasNews());
    }
}

TEST_F(WebDavCarrierTest, AsksForWhatHasChangedOnly) {
    Computer one(server_.address("good"), 1);
    Computer two(server_.address("good"), 2);
    one.exchange(listOf("milk", 10));
    EXPECT_THAT(requestsUntil("PUT"), ElementsAre("MKCOL", "MKCOL", "PROPFIND", "PUT"));
    one.exchange(); // It reads back what it has stored.
    EXPECT_THAT(requestsUntil("GET"), ElementsAre("PROPFIND", "GET"));
    two.exchange();
    EXPECT_THAT(requestsUntil("GET"), ElementsAre("MKCOL", "MKCOL", "PROPFIND", "GET"));
    std::this_thread::sleep_for(3s); // The file might still change without being listed in another way.
    two.exchange();
    EXPECT_THAT(requestsUntil("GET"), ElementsAre("PROPFIND", "GET"));
    two.exchange();
    one.exchange();
    two.exchange(listOf("bread", 20));
    EXPECT_THAT(requestsUntil("PUT"), ElementsAre("PROPFIND", "PROPFIND", "PROPFIND", "PUT"));
}

TEST_F(WebDavCarrierTest, SaysInWordsWhatIsInTheWay) {
    const std::string page = "a web page comes instead of the file; perhaps somebody has to log in";
    const std::string cut = "the server breaks off the connection";
    const std::string long_ = "the server answers more than can be read";
    for (const auto& [part, complaint] : std::vector<std::pair<std::string, std::string>>{
             {"forbidden", "the server does not allow that"},
             {"broken", "the server answers with the HTTP status 500"},
             {"static", "there is no WebDAV at that address"},
             {"old", "there is no WebDAV at that address"},
             {"often", "the server wants to be asked less often"},
             {"busy", "the server is not ready for the moment"},
             {"strange", "the server answers with the HTTP status 299"},
             {"locked", "somebody has locked the file at the server"},
             {"full", "the server's disk is full"},
             {"too-large", "the list is too large for the server"},
             {"read-only", "the server does not allow that"},
             {"accepted", "the server answers with the HTTP status 202"},
             {"password", "the server wants a user's name and password"},
             {"web-page", page},
             {"closed", cut},
             {"elsewhere", "the server leads to another one, which is not followed"},
             {"circle", "the server leads round in circles"},
             {"endless", long_},
             {"endless-head", long_},
             {"laughs", "what the server lists cannot be read: it has a document type"},
             {"no-xml", "what the server lists cannot be read: unclosed token"}})
        EXPECT_EQ(complaintAbout(part), complaint) << part;
    EXPECT_EQ(Computer(server_.address("good") + "/missing", 1).complaint(),
              server_.address("good") + "/missing is not there");
    EXPECT_EQ(Computer(server_.address("good"), 1, "", WebDavCarrier::SetUp::No).complaint(),
              server_.address("good") + "/quillo/v1 is not there");
    EXPECT_EQ(Computer("http://127.0.0.1:1", 1).complaint(), "nobody answers there");
    EXPECT_EQ(Computer("http://cloud.invalid", 1).complaint(),
              "the address must begin with https, unless it is this machine's");
    EXPECT_EQ(Computer("https://cloud.invalid", 1).complaint(), "nobody answers there");
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(WebDavCarrierTest, KeepsWhatItHasWhereTheServerFails) {
    for (const auto& [part, complaint] : std::vector<std::pair<std::string, std::string>>{
             {"cut", "the server breaks off the connection"},
             {"pages-for-files", "a web page comes instead of the file; perhaps somebody has to log in"}}) {
        Computer one(server_.address(part), 1);
        Computer two(server_.address(part), 2);
        EXPECT_TRUE(one.exchange(listOf("milk", 10)).outcome);
        two.mirror.receive(listOf("bread", 5));
        EXPECT_EQ(two.complaint(), complaint);
        EXPECT_EQ(two.mirror.latest(), listOf("bread", 5)) << part;
    }
}

TEST_F(WebDavCarrierTest, ReadsAgainWhatMayHaveBeenStored) {
    for (const char* part : {"half-stored", "stored-silently"}) {
        SCOPED_TRACE(part);
        Computer one(server_.address(part), 1);
        EXPECT_FALSE(one.exchange(listOf("milk", 10)).outcome);
        EXPECT_TRUE(one.exchange().outcome);
        Computer two(server_.address(part), 2);
        EXPECT_TRUE(two.exchange().outcome);
        EXPECT_EQ(two.mirror.latest(), listOf("milk", 10));
    }
    EXPECT_EQ(log_.lines().size(), 1U) << "half a file";
}

TEST_F(WebDavCarrierTest, FollowsTheServerOnItself) {
    Computer one(server_.address("redirect"), 1);
    EXPECT_TRUE(one.exchange(listOf("milk", 10)).outcome);
    Computer two(server_.address("good"), 2);
    two.exchange();
    EXPECT_EQ(two.mirror.latest(), listOf("milk", 10));
}

TEST_F(WebDavCarrierTest, ProvesWhoAsks) {
    for (const char* part : {"password", "digest"}) {
        SCOPED_TRACE(part);
        Computer one(server_.address(part), 1, "me");
        EXPECT_EQ(one.complaint(), passwordIsWanted({server_.address(part), "me"}).message);
        static_cast<void>(one.passwords->keep({}, "secret"));
        EXPECT_TRUE(one.exchange(listOf("milk", 10)).outcome);
        Computer two(server_.address(part), 2, "me");
        static_cast<void>(two.passwords->keep({}, "secret"));
        EXPECT_TRUE(two.exchange().outcome);
        EXPECT_EQ(two.mirror.latest(), listOf("milk", 10));
    }
}

TEST_F(WebDavCarrierTest, DoesNotTryARefusedPasswordAgainByItself) {
    Computer one(server_.address("password"), 1, "me");
    static_cast<void>(one.passwords->keep({}, "wrong"));
    for (int time = 0; time < 5; ++time)
        EXPECT_EQ(one.complaint(), "the server says that the password is wrong");
    EXPECT_THAT(server_.nextEvent(), HasSubstr("MKCOL"));
    static_cast<void>(one.passwords->keep({}, "secret"));
    EXPECT_TRUE(one.exchange().outcome);
    // In between nobody was there.
    EXPECT_THAT(server_.nextEvent(), HasSubstr("Basic bWU6c2VjcmV0"));
}

TEST_F(WebDavCarrierTest, NeverTellsThePassword) {
    for (const char* part : {"password", "elsewhere", "broken", "closed", "web-page"}) {
        Computer one(server_.address(part), 1, "me");
        static_cast<void>(one.passwords->keep({}, "hunter2"));
        EXPECT_THAT(one.complaint(), Not(HasSubstr("hunter2")));
    }
    for (const std::string& line : log_.lines())
        EXPECT_THAT(line, Not(HasSubstr("hunter2")));
}

TEST_F(WebDavCarrierTest, LeavesTheServerAloneAsItWants) {
    Computer one(server_.address("busy"), 1);
    EXPECT_EQ(one.complaint(), "the server is not ready for the moment");
    EXPECT_EQ(one.complaint(), "the server is not ready for the moment");
    Computer two(server_.address("good"), 2);
    two.exchange();
    EXPECT_THAT(server_.nextEvent(), HasSubstr("/busy/"));
    EXPECT_THAT(server_.nextEvent(), HasSubstr("/good/"));
}

TEST_F(WebDavCarrierTest, NeverWritesOverAFormatThatItDoesNotKnow) {
    Computer one(server_.address("good"), 1);
    one.exchange(listOf("milk", 10));
    HttpWebDavServer direct(server_.address("good"));
    const std::string file = "quillo/v1/" + deviceFileName(deviceOf(1).id);
    const std::string future = R"({"format":2})";
    static_cast<void>(direct.store(file, future));
    EXPECT_THAT(one.exchange(listOf("bread", 20)).outcome.error().message, HasSubstr("newer Quillo"));
    EXPECT_EQ(std::get<FetchedFile>(direct.fetch(file, "")).bytes, future);
}

TEST_F(WebDavCarrierTest, TakesAwayWhatADeviceHasLeft) {
    for (const char* part :
         {"good", "no-etag", "redirect", "password", "digest", "missing", "gone", "removed-later"}) {
        SCOPED_TRACE(part);
        Computer one(server_.address(part), 1, "me");
        Computer two(server_.address(part), 2, "me");
        for (Computer* computer : {&one, &two})
            static_cast<void>(computer->passwords->keep({}, "secret"));
        EXPECT_TRUE(one.exchange(listOf("milk", 10)).outcome);
        EXPECT_TRUE(two.exchange(listOf("bread", 20)).outcome);
        const auto file = one.carrier.fileOf(deviceOf(2).id);
        ASSERT_TRUE(file) << file.error().message;
        EXPECT_EQ(*file, (DeviceFile{deviceOf(2), listOf("bread", 20)}));
        EXPECT_FALSE(one.carrier.forget(deviceOf(2).id, 19)) << "it is another list by now";
        EXPECT_EQ(one.exchange().devices.size(), 2U);
        EXPECT_TRUE(one.carrier.forget(deviceOf(2).id, 20));
    }
    for (const char* part : {"good", "no-etag", "redirect", "password", "digest"}) {
        SCOPED_TRACE(part);
        Computer one(server_.address(part), 1, "me");
        static_cast<void>(one.passwords->keep({}, "secret"));
        EXPECT_EQ(one.exchange().devices, (std::vector<FoundDevice>{{deviceOf(1), 10}}));
        EXPECT_TRUE(one.carrier.forget(deviceOf(2).id, 20)) << "somebody else was faster";
        EXPECT_EQ(one.carrier.fileOf(deviceOf(2).id).error().message,
                  server_.address(part) + "/quillo/v1/" + deviceFileName(deviceOf(2).id) + " is not there");
    }
}

TEST_F(WebDavCarrierTest, SaysInWordsWhyNothingIsTakenAway) {
    for (const auto& [part, complaint] : std::vector<std::pair<std::string, std::string>>{
             {"kept", "the server does not allow that"},
             {"no-delete", "the server does not allow that"},
             {"kept-locked", "somebody has locked the file at the server"},
             {"kept-busy", "the server is not ready for the moment"},
             {"kept-in-part", "the server answers with the HTTP status 207"},
             {"removed-a-page", "a web page comes instead of the file; perhaps somebody has to log in"}}) {
        SCOPED_TRACE(part);
        Computer one(server_.address(part), 1);
        EXPECT_TRUE(one.exchange(listOf("milk", 10)).outcome);
        const Outcome forgotten = one.carrier.forget(deviceOf(1).id, 10);
        ASSERT_FALSE(forgotten);
        EXPECT_EQ(forgotten.error().message, complaint);
    }
    for (const auto& [part, complaint] : std::vector<std::pair<std::string, std::string>>{
             {"busy", "the server is not ready for the moment"},
             {"password", "the server wants a user's name and password"},
             {"closed", "the server breaks off the connection"}}) {
        SCOPED_TRACE(part);
        Computer one(server_.address(part), 1);
        EXPECT_EQ(one.carrier.fileOf(deviceOf(1).id).error().message, complaint);
        EXPECT_EQ(one.carrier.forget(deviceOf(1).id, 10).error().message, complaint);
    }
    EXPECT_EQ(Computer(server_.address("password"), 1, "me").carrier.fileOf(deviceOf(1).id).error().message,
              passwordIsWanted({server_.address("password"), "me"}).message);
}

TEST_F(WebDavCarrierTest, TakesNothingAwayThatItCannotRead) {
    Computer one(server_.address("good"), 1);
    one.exchange();
    HttpWebDavServer direct(server_.address("good"));
    const std::string file = "quillo/v1/" + deviceFileName(deviceOf(2).id);
    for (const std::string& bytes : {std::string("{"), std::string(R"({"format":2})"),
                                     encodeDeviceFile({deviceOf(3), listOf("milk", 10)}).value()}) {
        static_cast<void>(direct.store(file, bytes));
        EXPECT_FALSE(one.carrier.fileOf(deviceOf(2).id)) << bytes;
        EXPECT_FALSE(one.carrier.forget(deviceOf(2).id, 10)) << bytes;
        EXPECT_EQ(std::get<FetchedFile>(direct.fetch(file, "")).bytes, bytes);
    }
}

TEST_F(WebDavCarrierTest, GivesUpTakingAwayAtOnce) {
    Computer one(server_.address("slow"), 1, "", WebDavCarrier::SetUp::No);
    auto file = std::async(std::launch::async, [&] { return one.carrier.fileOf(deviceOf(2).id); });
    EXPECT_THAT(server_.nextEvent(), HasSubstr("slow"));
    const Clock::time_point before = Clock::now();
    one.carrier.giveUp();
    EXPECT_FALSE(file.get());
    EXPECT_LT(Clock::now() - before, 2s);
    EXPECT_FALSE(one.carrier.forget(deviceOf(2).id, 10));
}

TEST_F(WebDavCarrierTest, TrustsNoOtherCertificate) {
    const ServerProcess server("webdav/dav_server.py", "--tls");
    Computer one("https" + server.address("good").substr(4), 1);
    EXPECT_EQ(one.complaint(), "the certificate there cannot be trusted");
}

TEST_F(WebDavCarrierTest, AsksNoProxyForThisMachine) {
    const support::EnvironmentVariable lower("http_proxy", "http://127.0.0.1:1/");
    const support::EnvironmentVariable all("ALL_PROXY", "http://127.0.0.1:1/");
    EXPECT_TRUE(Computer(server_.address("good"), 1).exchange().outcome);
}

TEST_F(WebDavCarrierTest, GivesUpAtOnceWhateverTheServerDoes) {
    for (const char* part : {"slow", "drip", "endless"}) {
        SCOPED_TRACE(part);
        Computer one(server_.address(part), 1, "", WebDavCarrier::SetUp::No);
        auto outcome = std::async(std::launch::async, [&] { return one.exchange().outcome; });
        EXPECT_THAT(server_.nextEvent(), HasSubstr(part));
        const Clock::time_point before = Clock::now();
        one.carrier.giveUp();
        EXPECT_LT(Clock::now() - before, 1s);
        EXPECT_FALSE(outcome.get());
        EXPECT_LT(Clock::now() - before, 2s);
        EXPECT_FALSE(one.exchange().outcome);
        EXPECT_THAT(server_.nextEvent(), HasSubstr("gone"));
    }
}

TEST_F(WebDavCarrierTest, SleepsUntilSomebodyWakesIt) {
    Computer one(server_.address("good"), 1);
    one.exchange();
    const int wake = eventfd(0, EFD_CLOEXEC);
    auto news = std::async(std::launch::async, [&] { one.carrier.awaitNews(wake); });
    one.carrier.setShown(true);
    one.carrier.setShown(false);
    EXPECT_EQ(news.wait_for(300ms), std::future_status::timeout);
    eventfd_write(wake, 1);
    EXPECT_EQ(news.wait_for(30s), std::future_status::ready);
    close(wake);
}

} // namespace
} // namespace quillo
