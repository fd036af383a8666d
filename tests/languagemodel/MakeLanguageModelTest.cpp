#include "languagemodel/MakeLanguageModel.h"

#include "base/ManualExecutor.h"
#include "languagemodel/ModelServersLibrary.h"

#include <gtest/gtest.h>

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

TEST(ModelServersLibrary, IsLoadedOnce) {
    ModelServers* const servers = loadModelServers();
    ASSERT_NE(servers, nullptr);
    EXPECT_EQ(loadModelServers(), servers);
    EXPECT_TRUE(servers->modelNames({}, std::chrono::milliseconds(1)).empty());
}

} // namespace
} // namespace quillo
