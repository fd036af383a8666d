#include "model/TodoItemJson.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

namespace quillo {
namespace {

using support::numberedId;
using support::Task;

std::string exported(const std::vector<TodoItem>& items) {
    return encodeExportedItems(items);
}

TEST(ExportedItems, ArePrettyPrintedWithSortedKeys) {
    const TodoItem item = Task("Call \"mom\"")
                              .id(numberedId(0xAB))
                              .due(Instant::fromUnixSeconds(1772722800))
                              .made({0})
                              .done({86399.9})
                              .reminder("quillo.x");
    EXPECT_EQ(exported({item}), R"([
  {
    "completedAt": "2001-01-01T23:59:59Z",
    "createdAt": "2001-01-01T00:00:00Z",
    "dueDate": "2026-03-05T15:00:00Z",
    "id": "00000000-0000-0000-0000-0000000000AB",
    "isDone": true,
    "notificationID": "quillo.x",
    "title": "Call \"mom\""
  }
])");
}

TEST(ExportedItems, LeaveOutWhatIsAbsent) {
    EXPECT_EQ(exported({Task("a").id(numberedId(1)), Task("b").id(numberedId(2))}), R"([
  {
    "createdAt": "2001-01-01T00:00:00Z",
    "id": "00000000-0000-0000-0000-000000000001",
    "isDone": false,
    "title": "a"
  },
  {
    "createdAt": "2001-01-01T00:00:00Z",
    "id": "00000000-0000-0000-0000-000000000002",
    "isDone": false,
    "title": "b"
  }
])");
}

TEST(ExportedItems, OfAnEmptyListAreAnEmptyArray) {
    EXPECT_EQ(exported({}), "[]");
}

TEST(ExportedItems, FloorTimesToTheSecond) {
    EXPECT_NE(exported({Task("t").made({-0.25})}).find("\"2000-12-31T23:59:59Z\""), std::string::npos);
}

TEST(ExportedItems, KeepAbsurdTimesWithinFourDigits) {
    const std::string text = exported({Task("t").made({-1e300}).due({1e300})});
    EXPECT_NE(text.find("\"createdAt\": \"0000-01-01T00:00:00Z\""), std::string::npos);
    EXPECT_NE(text.find("\"dueDate\": \"9999-12-31T23:59:59Z\""), std::string::npos);
}

TEST(ExportedItems, ReplaceWhatIsNotUtf8) {
    EXPECT_NE(exported({Task("a\xFF")}).find("\"a\xEF\xBF\xBD\""), std::string::npos);
}

TEST(ExportedItems, CarryANumberAmongTheSortedKeysWhereOneIsGiven) {
    ExportedItemsWriter writer;
    writer.add(Task("t").id(numberedId(1)).reminder("r"), 7);
    EXPECT_EQ(writer.finish(), R"([
  {
    "createdAt": "2001-01-01T00:00:00Z",
    "id": "00000000-0000-0000-0000-000000000001",
    "isDone": false,
    "notificationID": "r",
    "number": 7,
    "title": "t"
  }
])");
}

TEST(ExportedItems, CanBeASingleObject) {
    EXPECT_EQ(encodeExportedItem(Task("t").id(numberedId(1)), 1), R"({
  "createdAt": "2001-01-01T00:00:00Z",
  "id": "00000000-0000-0000-0000-000000000001",
  "isDone": false,
  "number": 1,
  "title": "t"
})");
    EXPECT_EQ(encodeExportedItem(Task("t")).find("number"), std::string::npos);
}

} // namespace
} // namespace quillo
