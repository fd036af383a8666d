#include "languagemodel/MakeLanguageModel.h"

#include "base/ManualExecutor.h"
#include "languagemodel/ModelServersLibrary.h"
#include "modelservers/ServerProcess.h"
#include "support/AwaitingExecutor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillo {
namespace {

class StandIn final : public LanguageModel {
public:
    bool isAvailable() const override { return true; }
    std::unique_ptr<LanguageModelSession> startSession(std::string, ModelReference) override {
        return nullptr;
    }
};

TEST(MakeLanguageModel, MakesWhatIsChosen) {
    ManualExecutor executor;
    int embedded = 0;
    const MakeEmbeddedModel makeEmbedded = [&] {
        ++embedded;
        return std::make_unique<StandIn>();
    };
    EXPECT_TRUE(makeLanguageModel(EmbeddedModel{}, executor, makeEmbedded));
    EXPECT_EQ(embedded, 1);
    EXPECT_FALSE(makeLanguageModel(EmbeddedModel{}, executor, nullptr));
    EXPECT_FALSE(makeLanguageModel(NoModel{}, executor, makeEmbedded));
    const auto served = makeLanguageModel(ServedModel{"http://127.0.0.1:1"}, executor, makeEmbedded);
    ASSERT_TRUE(served);
    EXPECT_TRUE(served->isAvailable());
    EXPECT_EQ(embedded, 1);
}

TEST(MakeLanguageModel, LeadsToTheServer) {
    const support::ServerProcess server;
    support::AwaitingExecutor executor;
    const auto model = makeLanguageModel(ServedModel{server.address("good")}, executor, nullptr);
    const auto session = model->startSession("", {});
    std::vector<std::string> names;
    session->respond("call mom", {}, [&](const Result<GeneratedContent>& content) {
        ASSERT_TRUE(content) << content.error().message;
        for (const auto& [name, value] : content->properties)
            names.push_back(name);
    });
    ASSERT_TRUE(executor.runUntil([&] { return !names.empty(); }));
    EXPECT_THAT(names,
                testing::ElementsAre("kind", "amount", "month", "day", "hasTime", "hour", "minute", "title"));
}

TEST(ModelServersLibrary, IsLoadedOnce) {
    ModelServers* const servers = loadModelServers();
    ASSERT_NE(servers, nullptr);
    EXPECT_EQ(loadModelServers(), servers);
    EXPECT_TRUE(servers->modelNames({}, std::chrono::milliseconds(1)).empty());
}

} // namespace
} // namespace quillo
