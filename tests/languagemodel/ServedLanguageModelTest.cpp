#include "languagemodel/ServedLanguageModel.h"

#include "support/AwaitingExecutor.h"
#include "support/Gate.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>

namespace quillo {
namespace {

using testing::ElementsAre;

/// Notes what is asked; answers with the prompt, at once.
class NotingServers final : public ModelServers {
public:
    std::unique_ptr<LanguageModel> model(ServedModel choice, Executor&, std::chrono::milliseconds) override {
        notes.push_back(choice.address);
        class NotingModel final : public LanguageModel {
        public:
            explicit NotingModel(std::vector<std::string>& notes) : notes_(notes) {}
            bool isAvailable() const override { return true; }
            std::unique_ptr<LanguageModelSession> startSession(std::string instructions,
                                                               ModelReference reference) override {
                class NotingSession final : public LanguageModelSession {
                public:
                    NotingSession(std::vector<std::string>& notes, std::string instructions)
                        : notes_(notes), instructions_(std::move(instructions)) {}
                    void respond(std::string_view prompt, AnswerSchema, Reply reply) override {
                        notes_.push_back(instructions_ + "|" + std::string(prompt));
                        reply(GeneratedContent{{{std::string(prompt), true}}, {}});
                    }
                    void prewarm() override { notes_.push_back(instructions_ + "|warm"); }

                private:
                    std::vector<std::string>& notes_;
                    const std::string instructions_;
                };
                return std::make_unique<NotingSession>(notes_, instructions + "@" + reference.zone);
            }

        private:
            std::vector<std::string>& notes_;
        };
        return std::make_unique<NotingModel>(notes);
    }
    std::vector<Result<std::vector<std::string>>> modelNames(const std::vector<std::string>&,
                                                             std::chrono::milliseconds) override {
        return {};
    }

    std::vector<std::string> notes;
};

struct ServedLanguageModelTest : testing::Test {
    std::unique_ptr<LanguageModelSession> start(const std::string& instructions) {
        ModelReference reference;
        reference.zone = "UTC";
        return model->startSession(instructions, reference);
    }

    void ask(LanguageModelSession& session, std::string_view prompt) {
        session.respond(prompt, {}, [this](const Result<GeneratedContent>& content) {
            answers.push_back(content ? content->properties.front().first : content.error().message);
        });
    }

    support::Gate gate;
    std::atomic<int> loads = 0;
    NotingServers servers;
    ModelServers* library = &servers;
    support::AwaitingExecutor executor;
    std::unique_ptr<ServedLanguageModel> model =
        std::make_unique<ServedLanguageModel>(ServedModel{"http://a"}, executor, [this] {
            ++loads;
            gate.pass();
            return library;
        });
    std::vector<std::string> answers;
};

TEST_F(ServedLanguageModelTest, IsLoadedWhenItIsAsked) {
    EXPECT_TRUE(model->isAvailable());
    EXPECT_EQ(loads, 0);
    const auto session = start("I");
    ask(*session, "one");
    EXPECT_TRUE(executor.runUntil([&] { return !answers.empty(); }));
    ask(*session, "two"); // Now at once.
    EXPECT_THAT(answers, ElementsAre("one", "two"));
    EXPECT_THAT(servers.notes, ElementsAre("http://a", "I@UTC|one", "I@UTC|two"));
    EXPECT_EQ(loads, 1);
}

TEST_F(ServedLanguageModelTest, KeepsWhatIsAskedMeanwhile) {
    gate.close();
    const auto first = start("A");
    start("W")->prewarm(); // Goes on without its session.
    ask(*first, "one");
    auto dropped = start("B");
    ask(*dropped, "two");
    const auto third = start("C");
    ask(*third, "three");
    dropped.reset();
    gate.waitForArrival();
    EXPECT_TRUE(answers.empty());
    gate.open();
    EXPECT_TRUE(executor.runUntil([&] { return answers.size() == 2; }));
    EXPECT_THAT(answers, ElementsAre("one", "three"));
    EXPECT_THAT(servers.notes, ElementsAre("http://a", "W@UTC|warm", "A@UTC|one", "C@UTC|three"));
    EXPECT_EQ(loads, 1);
}

TEST_F(ServedLanguageModelTest, AnswersByAnErrorWhereItCannotBeLoaded) {
    library = nullptr;
    const auto session = start("I");
    session->prewarm();
    ask(*session, "one");
    EXPECT_TRUE(executor.runUntil([&] { return !answers.empty(); }));
    ask(*session, "two");
    EXPECT_THAT(answers, ElementsAre("what asks servers is missing", "what asks servers is missing"));
    EXPECT_EQ(loads, 1);
}

TEST_F(ServedLanguageModelTest, MayGoBeforeItIsLoaded) {
    gate.close();
    auto session = start("I");
    session->prewarm();
    ask(*session, "one");
    gate.waitForArrival();
    session.reset();
    gate.open();
    model.reset();
    EXPECT_FALSE(executor.runUntil([] { return false; }, std::chrono::seconds(0)));
    EXPECT_TRUE(answers.empty());
    EXPECT_TRUE(servers.notes.empty());
}

TEST_F(ServedLanguageModelTest, AReplyMayDropItAll) {
    auto session = start("I");
    bool answered = false;
    session->respond("one", {}, [&](const auto&) {
        session.reset();
        answered = true;
    });
    const auto other = start("J");
    ask(*other, "two");
    EXPECT_TRUE(executor.runUntil([&] { return answered && !answers.empty(); }));
}

} // namespace
} // namespace quillo
