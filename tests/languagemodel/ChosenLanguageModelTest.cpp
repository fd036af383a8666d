#include "languagemodel/ChosenLanguageModel.h"

#include <gtest/gtest.h>

#include <optional>

namespace quillo {
namespace {

using Answers = std::vector<std::function<void()>>;

/// Answers with its name as the only property, at once or when told to.
class NamedModel final : public LanguageModel {
public:
    NamedModel(std::string name, int& alive, Answers* later = nullptr)
        : name_(std::move(name)), alive_(alive), later_(later) {
        ++alive_;
    }
    ~NamedModel() override { --alive_; }
    NamedModel(const NamedModel&) = delete;
    NamedModel& operator=(const NamedModel&) = delete;

    bool isAvailable() const override { return true; }

    std::unique_ptr<LanguageModelSession> startSession(std::string instructions, ModelReference) override {
        class NamedSession final : public LanguageModelSession {
        public:
            NamedSession(NamedModel& model, std::string instructions)
                : model_(model), instructions_(std::move(instructions)) {}
            void respond(std::string_view prompt, AnswerSchema, Reply reply) override {
                const auto answer = [name = model_.name_ + instructions_ + std::string(prompt),
                                     told = std::move(reply)] {
                    told(GeneratedContent{{{name, true}}, {}});
                };
                if (model_.later_)
                    model_.later_->emplace_back(answer);
                else
                    answer();
            }
            void prewarm() override {}

        private:
            NamedModel& model_;
            const std::string instructions_;
        };
        return std::make_unique<NamedSession>(*this, std::move(instructions));
    }

private:
    const std::string name_;
    int& alive_;
    Answers* const later_;
};

struct ChosenLanguageModelTest : testing::Test {
    /// Asks, and keeps what is answered, if anything is, in `answer`.
    std::unique_ptr<LanguageModelSession> ask() {
        auto session = chosen.startSession("I", {});
        session->respond("P", {}, [this](const Result<GeneratedContent>& content) {
            answer = content ? content->properties.front().first : content.error().message;
        });
        return session;
    }

    int alive = 0;
    int made = 0;
    std::function<std::unique_ptr<LanguageModel>()> make;
    ChosenLanguageModel chosen{[this] {
        ++made;
        return make();
    }};
    std::string answer;
};

TEST_F(ChosenLanguageModelTest, IsMadeWhenItIsNeeded) {
    make = [this] { return std::make_unique<NamedModel>("a", alive); };
    EXPECT_EQ(made, 0);
    EXPECT_TRUE(chosen.isAvailable());
    ask();
    EXPECT_EQ(answer, "aIP");
    EXPECT_EQ(made, 1);
}

TEST_F(ChosenLanguageModelTest, MayBeNone) {
    make = [] { return nullptr; };
    EXPECT_FALSE(chosen.isAvailable());
    const auto session = ask();
    session->prewarm();
    EXPECT_EQ(answer, "no language model is chosen");
    EXPECT_EQ(made, 1);
}

TEST_F(ChosenLanguageModelTest, FollowsTheChoice) {
    make = [this] { return std::make_unique<NamedModel>("a", alive); };
    ask();
    make = [this] { return std::make_unique<NamedModel>("b", alive); };
    ask();
    EXPECT_EQ(answer, "aIP");
    chosen.choiceChanged();
    EXPECT_EQ(alive, 0);
    ask();
    EXPECT_EQ(answer, "bIP");
    make = [] { return nullptr; };
    chosen.choiceChanged();
    EXPECT_FALSE(chosen.isAvailable());
}

TEST_F(ChosenLanguageModelTest, LetsSessionsEndWithTheModelTheyBeganWith) {
    Answers later;
    make = [&] { return std::make_unique<NamedModel>("a", alive, &later); };
    auto session = ask();
    make = [&] { return std::make_unique<NamedModel>("b", alive); };
    chosen.choiceChanged();
    ask();
    EXPECT_EQ(answer, "bIP");
    EXPECT_EQ(alive, 2);
    later.front()();
    EXPECT_EQ(answer, "aIP");
    session.reset();
    EXPECT_EQ(alive, 1);
}

TEST_F(ChosenLanguageModelTest, AReplyMayDropItsSessionAndTheModel) {
    make = [this] { return std::make_unique<NamedModel>("a", alive); };
    std::unique_ptr<LanguageModelSession> session = chosen.startSession("I", {});
    session->respond("P", {}, [&](const auto&) {
        make = [] { return nullptr; };
        chosen.choiceChanged();
        session.reset();
        EXPECT_EQ(alive, 1); // It is still at work.
    });
    EXPECT_EQ(alive, 0);
}

} // namespace
} // namespace quillo
