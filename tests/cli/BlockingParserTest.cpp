#include "cli/BlockingParser.h"

#include "cli/JsonLines.h"
#include "support/ScriptedLanguageModel.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace quillo::cli {
namespace {

using support::generatedContent;
using support::generatedContentAt;

/// A model that answers from a thread of its own, as those do that ask others.
class DistantModel : public LanguageModel {
public:
    DistantModel(Executor& mainExecutor, GeneratedContent answer)
        : mainExecutor_(mainExecutor), answer_(std::move(answer)) {}

    bool isAvailable() const override { return true; }
    std::unique_ptr<LanguageModelSession> startSession(std::string, ModelReference) override {
        return std::make_unique<Session>(*this);
    }

private:
    class Session : public LanguageModelSession {
    public:
        explicit Session(DistantModel& model) : model_(model) {}
        ~Session() override { thread_.join(); }
        void respond(std::string_view, AnswerSchema, Reply reply) override {
            thread_ = std::thread([this, reply = std::move(reply)] {
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
                model_.mainExecutor_.post([reply, answer = model_.answer_] { reply(answer); });
            });
        }
        void prewarm() override {}

    private:
        DistantModel& model_;
        std::thread thread_;
    };

    Executor& mainExecutor_;
    const GeneratedContent answer_;
};

const Instant now = Instant::fromUnixSeconds(1741078800); // 4 March 2025, 10:00 in Berlin

TEST(BlockingParser, WaitsForTheModel) {
    ManualExecutor mainExecutor;
    DistantModel model(mainExecutor, generatedContentAt("TOMORROW", 21, 0, "call mom"));
    Places places(&model);
    const auto place = *places.at("Europe/Berlin", "en_US");
    const Parse parse = BlockingParser(mainExecutor).parse(*place, "call mom tmrw 9p", now);
    EXPECT_EQ(parse.path, ParsePath::Model);
    EXPECT_EQ(parse.task.title, "call mom");
    EXPECT_EQ(parse.task.dueDate, place->calendar().instant({2025, 3, 5}, {21, 0}));
}

TEST(BlockingParser, WaitsForNothingElse) {
    ManualExecutor mainExecutor;
    Places places;
    const auto place = *places.at("Europe/Berlin", "en_US");
    const BlockingParser parser(mainExecutor);
    Trace trace;
    EXPECT_EQ(parser.parse(*place, "Buy milk", now).path, ParsePath::None);
    EXPECT_EQ(parser.parse(*place, "call mom tomorrow", now, &trace).path, ParsePath::Rules);
    EXPECT_EQ(trace.size(), 1U);
    EXPECT_EQ(parser.parse(*place, "maybe", now).task.interpretation, "regex+ai miss");
}

TEST(BlockingParser, AnswersLinesInTurn) {
    ManualExecutor mainExecutor;
    DistantModel model(mainExecutor, generatedContent("TOMORROW", "it"));
    Places places(&model);
    const BlockingParser parser(mainExecutor);
    std::string input = R"({"id":1,"text":"it tmrw at last, maybe"}
{"id":2,"text":"Buy milk"}
{"id":3,"text":"soon","tz":"Asia/Tokyo"}
)";
    std::FILE* in = fmemopen(input.data(), input.size(), "r");
    char* answers = nullptr;
    std::size_t length = 0;
    std::FILE* out = open_memstream(&answers, &length);
    const auto place = *places.at("Europe/Berlin", "en_US");
    const Result<bool> all =
        answerJsonLines(in, out, {[] { return now; }, place}, places, textQuestion(parser));
    std::fclose(in);
    std::fclose(out);
    EXPECT_TRUE(all.ok() && *all);
    const std::string interpretation = "AI: TOMORROW amount=0 m=0 d=0 hasTime=false 0:0";
    EXPECT_EQ(std::string(answers, length),
              "{\"id\":1,\"hint\":true,\"title\":\"it\",\"due\":1741161600,\"interpretation\":\"" +
                  interpretation + "\",\"path\":\"model\"}\n" +
                  "{\"id\":2,\"hint\":false,\"title\":\"Buy milk\",\"due\":null,\"interpretation\":null,"
                  "\"path\":\"none\"}\n" +
                  "{\"id\":3,\"hint\":true,\"title\":\"it\",\"due\":1741132800,\"interpretation\":\"" +
                  interpretation + "\",\"path\":\"model\"}\n");
    std::free(answers);
}

} // namespace
} // namespace quillo::cli
