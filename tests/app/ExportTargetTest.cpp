#include "app/ExportTarget.h"

#include "base/Log.h"
#include "support/RecordingSavePanel.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <csignal>
#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::bytesOf;
using support::Task;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct ExportTargetTest : testing::Test {
    void SetUp() override {
        setLogSink([this](std::string_view line) { log.emplace_back(line); });
    }
    void TearDown() override { setLogSink({}); }

    /// What the user answers to the latest panel.
    void answer(const std::optional<std::filesystem::path>& file) {
        panel.asked.back().second(file);
        target.drain();
    }

    std::vector<std::string> log;
    support::TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "list";
    support::RecordingSavePanel panel;
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    TaskList tasks{
        {Task("Call the bank").due(Instant::fromUnixSeconds(1772719200)), Task("Send invoice").done()}};
    ExportTarget target{{[this]() -> const TaskList& { return tasks; }, calendar, panel}};
};

TEST_F(ExportTargetTest, WritesMarkdown) {
    target.exportMarkdown();
    ASSERT_THAT(panel.asked, SizeIs(1));
    const SaveQuestion& question = panel.asked.front().first;
    EXPECT_EQ(question.suggestedName, "Quillo.md");
    EXPECT_EQ(question.ending, "md");
    answer(file);
    EXPECT_EQ(bytesOf(file), "# Quillo Export\n\n"
                             "- [ ] Call the bank  *(Mar 5, 2026 at 3:00 PM)*\n"
                             "- [x] Send invoice\n");
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(ExportTargetTest, WritesJson) {
    target.exportJson();
    const SaveQuestion& question = panel.asked.front().first;
    EXPECT_EQ(question.suggestedName, "Quillo.json");
    EXPECT_EQ(question.ending, "json");
    answer(file);
    EXPECT_THAT(bytesOf(file), testing::HasSubstr("\"title\": \"Call the bank\""));
    EXPECT_EQ(bytesOf(file).back(), ']');
}

TEST_F(ExportTargetTest, WritesTheListAsItWasWhenTheActionBegan) {
    target.exportMarkdown();
    tasks.pushFront(Task("Later"));
    calendar = *unicode::CivilCalendar::create("Asia/Tokyo", "de_DE");
    answer(file);
    EXPECT_THAT(bytesOf(file), testing::Not(testing::HasSubstr("Later")));
    EXPECT_THAT(bytesOf(file), testing::HasSubstr("Mar 5, 2026 at 3:00 PM"));
}

TEST_F(ExportTargetTest, AnEmptyListIsWrittenToo) {
    tasks = TaskList();
    target.exportMarkdown();
    answer(file);
    EXPECT_EQ(bytesOf(file), "# Quillo Export\n\n");
}

TEST_F(ExportTargetTest, WritesNothingWhereTheUserDoesNotWantTo) {
    target.exportMarkdown();
    answer(std::nullopt);
    EXPECT_THAT(support::namesIn(folder.path()), IsEmpty());
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(ExportTargetTest, ReplacesAFile) {
    support::writeFile(file, std::string(100'000, 'x'));
    target.exportMarkdown();
    answer(file);
    EXPECT_EQ(bytesOf(file).front(), '#');
    EXPECT_THAT(support::namesIn(folder.path()), ElementsAre("list"));
}

TEST_F(ExportTargetTest, AFailureIsOnlyLogged) {
    target.exportMarkdown();
    answer(folder.path() / "gone" / "list");
    target.exportJson();
    answer(folder.path()); // a folder
    EXPECT_THAT(log, SizeIs(2));
    for (const std::string& line : log)
        EXPECT_THAT(line, testing::Not(testing::HasSubstr("gone")));
}

/// Lets no file of this process grow beyond so many bytes, as on a disk that is full.
class LargestFile {
public:
    explicit LargestFile(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~LargestFile() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    LargestFile(const LargestFile&) = delete;
    LargestFile& operator=(const LargestFile&) = delete;

private:
    rlimit before_{};
    void (*handler_)(int);
};

TEST_F(ExportTargetTest, AFullDiskLeavesTheOldFile) {
    support::writeFile(file, "old");
    target.exportMarkdown();
    {
        const LargestFile limit(20);
        answer(file);
    }
    EXPECT_EQ(bytesOf(file), "old");
    EXPECT_THAT(support::namesIn(folder.path()), ElementsAre("list"));
    EXPECT_THAT(log, SizeIs(1));
}

TEST_F(ExportTargetTest, SeveralPanelsCanBeOpen) {
    target.exportMarkdown();
    tasks = TaskList();
    target.exportMarkdown();
    panel.asked[0].second(file);
    panel.asked[1].second(folder.path() / "other");
    target.drain();
    EXPECT_THAT(bytesOf(file), testing::HasSubstr("Send invoice"));
    EXPECT_EQ(bytesOf(folder.path() / "other"), "# Quillo Export\n\n");
}

} // namespace
} // namespace quillo
