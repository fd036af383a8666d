#include "modelservers/HttpLanguageModel.h"

#include "modelservers/ServerProcess.h"
#include "support/AwaitingExecutor.h"
#include "support/EnvironmentVariable.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <optional>

namespace quillo {
namespace {

using namespace std::chrono_literals;
using support::AwaitingExecutor;
using support::EnvironmentVariable;
using support::ServerProcess;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;
using Clock = std::chrono::steady_clock;
using Value = GeneratedContent::Value;

constexpr auto ample = 60'000ms;
constexpr auto scarce = 300ms;

constexpr std::array<std::string_view, 2> kinds{"NONE", "TOMORROW"};
const std::array<PropertyGuide, 2> schema{
    PropertyGuide{"kind", PropertyGuide::Type::Text, kinds, "Pick one."},
    PropertyGuide{"amount", PropertyGuide::Type::Integer, {}, "How many."},
};

class HttpLanguageModelTest : public testing::Test {
protected:
    std::unique_ptr<HttpLanguageModel> modelAt(std::string address, std::string name = "given",
                                               std::chrono::milliseconds limit = ample) {
        return std::make_unique<HttpLanguageModel>(ServedModel{std::move(address), std::move(name)},
                                                   executor_, limit);
    }

    Result<GeneratedContent> ask(LanguageModel& model) {
        const auto session = model.startSession("Be strict.", {});
        std::optional<Result<GeneratedContent>> answer;
        session->respond("call mom tomorrow", schema,
                         [&](Result<GeneratedContent> content) { answer = std::move(content); });
        EXPECT_TRUE(executor_.runUntil([&] { return answer.has_value(); }));
        return answer.value_or(Error{"no answer"});
    }

    /// Why the server gives no answer where it plays that part.
    std::string complaintAbout(const std::string& part, std::chrono::milliseconds limit = ample) {
        const Result<GeneratedContent> content = ask(*modelAt(server_.address(part), "given", limit));
        return content ? "none" : content.error().message;
    }

    AwaitingExecutor executor_;
    ServerProcess server_;
};

TEST_F(HttpLanguageModelTest, IsAskedOverHttp) {
    const auto model = modelAt(server_.address("good"));
    EXPECT_TRUE(model->isAvailable());
    const auto content = ask(*model);
    ASSERT_TRUE(content) << content.error().message;
    EXPECT_EQ(content->properties.size(), 8U);
    EXPECT_EQ(content->properties.front(), std::pair(std::string("kind"), Value("TOMORROW")));
    EXPECT_THAT(content->properties, Contains(Pair("hour", Value(std::int64_t{9}))));
    EXPECT_THAT(content->properties, Contains(Pair("hasTime", Value(true))));
    const std::string request = server_.nextEvent();
    EXPECT_THAT(request, HasSubstr(R"("method": "POST", "path": "/good/v1/chat/completions")"));
    EXPECT_THAT(request, HasSubstr(R"("model": "given")"));
    EXPECT_THAT(request, HasSubstr(R"({"role": "system", "content": "Be strict."})"));
    EXPECT_THAT(request, HasSubstr(R"({"role": "user", "content": "call mom tomorrow"})"));
    EXPECT_THAT(request, HasSubstr(R"("enum": ["NONE", "TOMORROW"])"));
    EXPECT_THAT(request, Not(HasSubstr("temperature")));
}

TEST_F(HttpLanguageModelTest, OfNoNameIsTheFirstThatTheServerHas) {
    const auto model = modelAt(server_.address("good"), "");
    for (int time = 0; time < 2; ++time)
        ASSERT_TRUE(ask(*model));
    EXPECT_THAT(server_.nextEvent(), HasSubstr(R"("path": "/good/v1/models")"));
    for (int time = 0; time < 2; ++time) // The second time the name is known.
        EXPECT_THAT(server_.nextEvent(), HasSubstr(R"("model": "first")"));
}

TEST_F(HttpLanguageModelTest, HandsOnWhatDoesNotFitTheForm) {
    const auto unknown = ask(*modelAt(server_.address("unknown-bucket")));
    ASSERT_TRUE(unknown);
    EXPECT_EQ(unknown->properties.front().second, Value("NEXT_WEEK"));
    const auto missing = ask(*modelAt(server_.address("missing-field")));
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->properties.size(), 7U);
}

TEST_F(HttpLanguageModelTest, SaysInWordsWhyThereIsNoAnswer) {
    const std::string tooLong = "it answers more than can be read";
    EXPECT_EQ(complaintAbout("prose"), "its model does not keep to the form");
    EXPECT_EQ(complaintAbout("huge"), tooLong);
    EXPECT_EQ(complaintAbout("endless"), tooLong);
    EXPECT_EQ(complaintAbout("endless-head"), tooLong);
    EXPECT_EQ(complaintAbout("closed"), "it breaks off the connection");
    EXPECT_EQ(complaintAbout("half"), "it breaks off the connection");
    EXPECT_EQ(complaintAbout("broken"), "it answers with the HTTP status 500");
    EXPECT_EQ(complaintAbout("missing"), "it answers with the HTTP status 404");
    EXPECT_EQ(complaintAbout("loading"), "it is busy, or still loading its model");
    EXPECT_EQ(complaintAbout("unauthorized"), "it wants a key");
    EXPECT_EQ(complaintAbout("web-page"), "it answers with something else than JSON");
    EXPECT_EQ(complaintAbout("no-json"), "its answer holds no text");
    EXPECT_EQ(ask(*modelAt(server_.address("no-model"), "")).error().message, "it has no model");
}

TEST_F(HttpLanguageModelTest, DoesNotFollowRedirects) {
    EXPECT_EQ(complaintAbout("redirect"), "it answers with the HTTP status 307");
    EXPECT_THAT(server_.nextEvent(), HasSubstr("/redirect/"));
    EXPECT_EQ(complaintAbout("broken"), "it answers with the HTTP status 500");
    EXPECT_THAT(server_.nextEvent(), HasSubstr("/broken/")); // Nobody was at /good in between.
}

TEST_F(HttpLanguageModelTest, WaitsNoLongerThanItsLimit) {
    const Clock::time_point before = Clock::now();
    EXPECT_EQ(complaintAbout("slow", scarce), "it does not answer in time");
    EXPECT_EQ(complaintAbout("drip", scarce), "it does not answer in time");
    // Which model there is belongs to the same time.
    EXPECT_EQ(ask(*modelAt(server_.address("slow"), "", scarce)).error().message,
              "it does not answer in time");
    EXPECT_GE(Clock::now() - before, 3 * scarce);
    EXPECT_LT(Clock::now() - before, 8s);
}

TEST_F(HttpLanguageModelTest, SaysThatNobodyAnswers) {
    // A port that is taken, and on which nobody listens.
    const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), length), 0);
    ASSERT_EQ(getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length), 0);
    const auto model = modelAt("http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)));
    EXPECT_EQ(ask(*model).error().message, "nobody answers there");
    close(descriptor);
}

TEST_F(HttpLanguageModelTest, AsksNoProxyForThisMachine) {
    const EnvironmentVariable lower("http_proxy", "http://127.0.0.1:1/");
    const EnvironmentVariable all("ALL_PROXY", "http://127.0.0.1:1/");
    EXPECT_TRUE(ask(*modelAt(server_.address("good"))));
}

TEST_F(HttpLanguageModelTest, GivesUpWhatADroppedSessionHasAsked) {
    const auto model = modelAt(server_.address("slow"));
    auto session = model->startSession("", {});
    session->respond("x", schema, [](const auto&) { FAIL() << "nobody wants to hear this"; });
    EXPECT_THAT(server_.nextEvent(), HasSubstr(R"("method": "POST")"));
    session.reset();
    EXPECT_THAT(server_.nextEvent(), HasSubstr(R"({"gone": "/slow/v1/chat/completions"})"));
    EXPECT_FALSE(executor_.runUntil([] { return false; }, 0s));
}

TEST_F(HttpLanguageModelTest, RepliesToNobodyWhoLeftWhenTheAnswerWasOnItsWay) {
    const auto model = modelAt(server_.address("good"));
    auto session = model->startSession("", {});
    session->respond("x", schema, [](const auto&) { FAIL() << "nobody wants to hear this"; });
    ASSERT_TRUE(executor_.awaitWork());
    session.reset();
    EXPECT_FALSE(executor_.runUntil([] { return false; }, 0s));
}

TEST_F(HttpLanguageModelTest, AReplyMayDropItsSession) {
    const auto model = modelAt(server_.address("good"));
    auto session = model->startSession("", {});
    bool answered = false;
    session->respond("x", schema, [&](const Result<GeneratedContent>& content) {
        session.reset();
        answered = content.ok();
    });
    EXPECT_TRUE(executor_.runUntil([&] { return answered; }));
}

TEST_F(HttpLanguageModelTest, GoesAtOnceWhateverIsUnderWay) {
    auto model = modelAt(server_.address("slow"));
    std::vector<std::unique_ptr<LanguageModelSession>> sessions;
    for (int number = 0; number < 5; ++number) {
        sessions.push_back(model->startSession("", {}));
        sessions.back()->respond("x", schema, [](const auto&) { FAIL() << "nobody wants to hear this"; });
    }
    sessions.front()->prewarm();
    for (int number = 0; number < 6; ++number)
        server_.nextEvent();
    const Clock::time_point before = Clock::now();
    sessions.clear();
    model.reset();
    EXPECT_LT(Clock::now() - before, 2s);
}

TEST_F(HttpLanguageModelTest, AnswersManyAtATime) {
    const auto model = modelAt(server_.address("good"));
    std::vector<std::unique_ptr<LanguageModelSession>> sessions;
    int answered = 0;
    for (int number = 0; number < 20; ++number) {
        sessions.push_back(model->startSession("", {}));
        sessions.back()->respond("x", schema, [&](const auto& content) { answered += content ? 1 : 0; });
    }
    EXPECT_TRUE(executor_.runUntil([&] { return answered == 20; }));
}

TEST_F(HttpLanguageModelTest, HasOllamaLoadTheModel) {
    const auto model = modelAt(server_.address("ollama"), "second");
    model->startSession("warm up", {})->prewarm(); // It goes on without its session.
    EXPECT_THAT(server_.nextEvent(), HasSubstr("/ollama/v1/models"));
    EXPECT_THAT(server_.nextEvent(), HasSubstr("/ollama/api/version"));
    EXPECT_THAT(server_.nextEvent(),
                HasSubstr(R"("/ollama/api/chat", "body": {"model": "second", "messages": [])"));
}

TEST_F(HttpLanguageModelTest, HasLlamaServerReadTheInstructions) {
    const auto model = modelAt(server_.address("llama"), "");
    const auto session = model->startSession("Be strict.", {});
    session->prewarm();
    session->prewarm(); // Once at a time.
    EXPECT_THAT(server_.nextEvent(), HasSubstr("/llama/v1/models"));
    const std::string request = server_.nextEvent();
    EXPECT_THAT(request, HasSubstr("/llama/v1/chat/completions"));
    EXPECT_THAT(request, HasSubstr(R"("model": "first")"));
    EXPECT_THAT(request, HasSubstr(R"({"role": "system", "content": "Be strict."})"));
    EXPECT_THAT(request, HasSubstr(R"("max_tokens": 1)"));
}

TEST_F(HttpLanguageModelTest, LeavesOtherServersAloneBeforeTheyAreAsked) {
    const auto model = modelAt(server_.address("good"), "");
    model->startSession("", {})->prewarm();
    EXPECT_THAT(server_.nextEvent(), HasSubstr("/good/v1/models"));
    EXPECT_THAT(server_.nextEvent(), HasSubstr("/good/api/version"));
    ASSERT_TRUE(ask(*model));
    std::string next = server_.nextEvent();
    if (next.find("/v1/models") != std::string::npos) // The warm-up's answer may still have been on its way.
        next = server_.nextEvent();
    EXPECT_THAT(next, HasSubstr("/good/v1/chat/completions"));
}

} // namespace
} // namespace quillo
