#include "store/Export.h"

#include "model/TodoItemJson.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

namespace quillo {
namespace {

using support::numberedId;
using support::Task;
using unicode::DateFormat;

constexpr Instant afternoon = Instant::fromUnixSeconds(1772722800); // 2026-03-05 15:00:00 UTC

std::string markdown(std::vector<TodoItem> items, const char* locale = "en_US", const char* zone = "UTC") {
    return markdownExport(TaskList(std::move(items)), DateFormat(zone, locale));
}

TEST(MarkdownExport, IsAChecklist) {
    EXPECT_EQ(markdown({Task("Call the bank").due(afternoon), Task("Send invoice").done()}),
              "# Quillo Export\n"
              "\n"
              "- [ ] Call the bank  *(Mar 5, 2026 at 3:00 PM)*\n"
              "- [x] Send invoice\n");
}

TEST(MarkdownExport, OfAnEmptyListIsTheHeading) {
    EXPECT_EQ(markdown({}), "# Quillo Export\n\n");
}

TEST(MarkdownExport, KeepsTheOrderAndTheDatesOfDoneTasks) {
    EXPECT_EQ(markdown({Task("a").done().due(afternoon), Task("b"), Task("c").done()}),
              "# Quillo Export\n\n- [x] a  *(Mar 5, 2026 at 3:00 PM)*\n- [ ] b\n- [x] c\n");
}

TEST(MarkdownExport, WritesTitlesAsTheyAre) {
    const char* const odd[] = {
        "a]b", "*c*", "[x] d", "# e", "`f` \\ <g>", "", " h ", "\u00FC\u2028\U0001F438", "i\nj", "k\r\nl"};
    for (const char* title : odd)
        EXPECT_EQ(markdown({Task(title)}), "# Quillo Export\n\n- [ ] " + std::string(title) + "\n");
}

TEST(MarkdownExport, WritesDatesInTheUsersLocaleAndZone) {
    const struct {
        const char* locale;
        const char* zone;
        const char* line;
    } rows[] = {
        {"en_US", "UTC", "- [ ] t  *(Mar 5, 2026 at 3:00 PM)*\n"},
        {"en_GB", "Asia/Tokyo", "- [ ] t  *(6 Mar 2026 at 00:00)*\n"},
        {"de_DE", "Europe/Berlin", "- [ ] t  *(05.03.2026 um 16:00)*\n"},
        {"fr_FR", "Europe/Paris", "- [ ] t  *(5 mars 2026 \u00E0 16:00)*\n"},
        {"ja_JP", "Asia/Tokyo", "- [ ] t  *(2026/03/06 0:00)*\n"},
        {"ar_EG", "UTC",
         "- [ ] t  *(\u0660\u0665\u200F/\u0660\u0663\u200F/\u0662\u0660\u0662\u0666 \u0641\u064A "
         "\u0663:\u0660\u0660 \u0645)*\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(markdown({Task("t").due(afternoon)}, row.locale, row.zone),
                  "# Quillo Export\n\n" + std::string(row.line))
            << row.locale;
}

TEST(MarkdownExport, IsOfTheListAsItWas) {
    TaskList list({Task("a")});
    const TaskList taken = list;
    list.pushFront(Task("b"));
    EXPECT_EQ(markdownExport(taken, DateFormat("UTC", "en_US")), "# Quillo Export\n\n- [ ] a\n");
}

TEST(JsonExport, HasTheTasksInListOrder) {
    const TaskList list({Task("b \"]*").id(numberedId(2)).due(afternoon).done({0.75}),
                         Task("a\n").id(numberedId(1)).reminder("quillo.1")});
    EXPECT_EQ(jsonExport(list), R"([
  {
    "completedAt": "2001-01-01T00:00:00Z",
    "createdAt": "2001-01-01T00:00:00Z",
    "dueDate": "2026-03-05T15:00:00Z",
    "id": "00000000-0000-0000-0000-000000000002",
    "isDone": true,
    "title": "b \"]*"
  },
  {
    "createdAt": "2001-01-01T00:00:00Z",
    "id": "00000000-0000-0000-0000-000000000001",
    "isDone": false,
    "notificationID": "quillo.1",
    "title": "a\n"
  }
])");
}

TEST(JsonExport, OfAnEmptyListIsAnEmptyArray) {
    EXPECT_EQ(jsonExport(TaskList()), "[]");
}

TEST(JsonExport, OfALoadedListIsThatOfItsTasks) {
    const auto items = support::numberedTasks(1000);
    const auto list = TaskList::decode(Data(*encodeStoredItems(items)));
    ASSERT_TRUE(list);
    EXPECT_EQ(jsonExport(*list), encodeExportedItems(items));
}

} // namespace
} // namespace quillo
