#include "ui/sync/SyncModel.h"

#include "SyncWorld.h"
#include "model/TodoItemJson.h"
#include "support/TodoItemBuilder.h"
#include "sync/DeviceFile.h"

#include <gtest/gtest.h>

#include <QString>
#include <string>
#include <vector>

namespace quillo {
namespace {

using Place = SyncModel::Place;

class SyncModelTest : public testing::Test {
protected:
    SyncModelTest() {
        QObject::connect(&model, &SyncModel::used, [this] { ++used; });
        QObject::connect(&model, &SyncModel::folderChosen,
                         [this](const QString& folder) { chosen.push_back(folder); });
    }

    /// What another computer has left there.
    static void leave(const std::filesystem::path& root, double stamp, const std::vector<TodoItem>& items) {
        const Device device{support::numberedId(77), "attic", "Quillo"};
        std::filesystem::create_directories(root / "quillo/v1");
        support::writeFile(root / "quillo/v1" / deviceFileName(device.id),
                           *encodeDeviceFile({device, {Data(*encodeStoredItems(items)), stamp}}));
    }

    void untilAnswered() {
        world.until([this] { return !model.busy(); });
    }

    void use(Place place, const std::filesystem::path& where) {
        model.use(place, QString::fromStdString(where.string()), {}, {});
        untilAnswered();
    }

    std::vector<std::string> titles() const {
        std::vector<std::string> titles;
        for (std::size_t i = 0; i < world.store.items().size(); ++i)
            titles.push_back(world.store.items()[i].title);
        return titles;
    }

    support::SyncWorld world;
    SyncModel model{world.dependencies()};
    int used = 0;
    std::vector<QString> chosen;
};

TEST_F(SyncModelTest, BeginsNowhereAndKnowsNobody) {
    model.refresh();
    EXPECT_EQ(model.place(), Place::Nowhere);
    EXPECT_EQ(model.folder(), "");
    EXPECT_EQ(model.lastInStep(), "");
    EXPECT_EQ(model.problem(), "");
    EXPECT_TRUE(model.computers().isEmpty());
    EXPECT_FALSE(model.bothHaveTasks());
}

TEST_F(SyncModelTest, AFolderIsUsedAndLeft) {
    const auto root = world.newFolder("shared");
    use(Place::Folder, root);
    EXPECT_EQ(used, 1);
    EXPECT_EQ(model.place(), Place::Folder);
    EXPECT_EQ(model.folder().toStdString(), root.string());
    world.until([this] { return model.computers().size() == 1; });
    EXPECT_EQ(model.computers().front().name, "This computer");
    EXPECT_FALSE(model.computers().front().forgettable);
    EXPECT_EQ(model.lastInStep(), "Mar 4, 2025 at 10:41 AM");

    use(Place::Nowhere, {});
    EXPECT_EQ(used, 2);
    EXPECT_EQ(model.place(), Place::Nowhere);
}

TEST_F(SyncModelTest, WhatCannotBeUsedIsToldAndNothingIsChanged) {
    for (const auto& where :
         {world.folder.path() / "missing", std::filesystem::path("not/absolute"), std::filesystem::path()}) {
        use(Place::Folder, where);
        EXPECT_TRUE(model.failed()) << where;
        EXPECT_NE(model.answer(), "");
        EXPECT_EQ(model.place(), Place::Nowhere);
    }
    model.use(Place::Server, "http://somewhere.example/dav", {}, {});
    untilAnswered();
    EXPECT_TRUE(model.failed());
    model.dismiss();
    EXPECT_EQ(model.answer(), "");
    EXPECT_EQ(used, 0);
}

TEST_F(SyncModelTest, APlaceIsTestedWithoutBeingUsed) {
    const auto root = world.newFolder("shared");
    model.test(Place::Folder, QString::fromStdString(root.string()), {}, {});
    EXPECT_TRUE(model.busy());
    untilAnswered();
    EXPECT_EQ(model.answer(), "The place can be used.");
    EXPECT_FALSE(model.failed());
    EXPECT_EQ(model.place(), Place::Nowhere);
}

TEST_F(SyncModelTest, WhereBothSidesHaveTasksTheUserIsAskedAndTheOtherListComesBack) {
    const auto root = world.newFolder("shared");
    leave(root, 1000, {support::Task("theirs"), support::Task("theirs too")});
    world.store.add(support::Task("mine"));
    use(Place::Folder, root);
    EXPECT_TRUE(model.bothHaveTasks());
    EXPECT_EQ(model.tasksHere(), 1);
    EXPECT_EQ(model.tasksThere(), 2);
    EXPECT_EQ(model.place(), Place::Nowhere);
    EXPECT_EQ(titles(), std::vector<std::string>{"mine"});

    model.keepTheirs();
    untilAnswered();
    EXPECT_EQ(used, 1);
    EXPECT_FALSE(model.bothHaveTasks());
    EXPECT_EQ(titles(), (std::vector<std::string>{"theirs", "theirs too"}));

    model.refresh();
    world.until([this] { return model.earlierLists().size() == 1; });
    EXPECT_EQ(model.earlierLists().front(), "Mar 4, 2025 at 10:41 AM");
    model.restore(0);
    untilAnswered();
    EXPECT_EQ(titles(), std::vector<std::string>{"mine"});
    EXPECT_EQ(model.answer(), "The earlier list is back.");
}

TEST_F(SyncModelTest, WhoKeepsHisOwnListSendsIt) {
    const auto root = world.newFolder("shared");
    leave(root, 1000, {support::Task("theirs")});
    world.store.add(support::Task("mine"));
    use(Place::Folder, root);
    model.keepMine();
    untilAnswered();
    EXPECT_EQ(titles(), std::vector<std::string>{"mine"});
    world.until([this] { return model.computers().size() == 2; });
    EXPECT_EQ(model.computers()[0].name, "This computer");
    EXPECT_EQ(model.computers()[1].name, "attic");
    EXPECT_EQ(model.computers()[1].changed, "Jan 1, 1970 at 1:16 AM");
}

TEST_F(SyncModelTest, AComputerThatWasSilentForAYearCanBeForgotten) {
    const auto root = world.newFolder("shared");
    leave(root, 1000, {support::Task("theirs")});
    use(Place::Folder, root);
    world.until([this] { return model.computers().size() == 2; });
    const QList<SyncedComputer> computers = model.computers();
    const SyncedComputer& attic = computers[computers[0].name == "attic" ? 0 : 1];
    ASSERT_TRUE(attic.forgettable);
    model.forget(attic.device);
    untilAnswered();
    EXPECT_FALSE(model.failed()) << model.answer().toStdString();
    world.until([this] { return model.computers().size() == 1; });
    EXPECT_EQ(model.computers().front().name, "This computer");
}

TEST_F(SyncModelTest, SyncNowSaysWhatIsInTheWay) {
    const auto root = world.newFolder("shared");
    use(Place::Folder, root);
    model.syncNow();
    untilAnswered();
    EXPECT_EQ(model.answer(), "In step.");
    std::filesystem::rename(root, world.folder.path() / "away");
    model.syncNow();
    untilAnswered();
    EXPECT_TRUE(model.failed());
    EXPECT_NE(model.problem(), "");
}

TEST_F(SyncModelTest, TheUserChoosesAFolder) {
    model.chooseFolder();
    ASSERT_EQ(world.panel.asked.size(), 1U);
    EXPECT_EQ(world.panel.asked[0].question.title, "Folder to Sync Through");
    world.panel.asked[0].answer(std::nullopt);
    EXPECT_TRUE(chosen.empty());
    world.panel.asked[0].answer("/home/me/Sync");
    EXPECT_EQ(chosen, std::vector<QString>{"/home/me/Sync"});
}

} // namespace
} // namespace quillo
