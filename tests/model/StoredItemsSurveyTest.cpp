#include "model/StoredItemsSurvey.h"

#include "model/TodoItemJson.h"
#include "support/ArbitraryTodoItem.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

namespace quillo {
namespace {

/// What the stretches say of the tasks must be what decoding them says.
void expectAgreement(const std::string& bytes, const std::vector<StoredStretch>& stretches,
                     std::size_t largest) {
    const auto all = decodeStoredItems(bytes);
    ASSERT_TRUE(all) << bytes;
    std::vector<TodoItem> found;
    for (std::size_t index = 0; index < stretches.size(); ++index) {
        const StoredStretch& stretch = stretches[index];
        if (index + 1 < stretches.size()) {
            EXPECT_EQ(stretch.ids.size(), largest);
        }
        const auto items = decodeStoredItems("[" + std::string(stretch.bytes) + "]");
        ASSERT_TRUE(items) << stretch.bytes;
        std::vector<Uuid> ids;
        std::vector<bool> done;
        for (const TodoItem& item : *items) {
            ids.push_back(item.id);
            done.push_back(item.isDone);
            found.push_back(item);
        }
        EXPECT_EQ(stretch.ids, ids);
        EXPECT_EQ(stretch.done, done);
    }
    EXPECT_EQ(found, *all);
}

/// A task with instants as clocks show them.
TodoItem ordinary(TodoItem item) {
    const auto usual = [](Instant instant) {
        return Instant{7e8 + static_cast<double>(
                                 static_cast<std::int64_t>(std::hash<double>()(instant.secondsSince2001)) %
                                 1'000'000'000) /
                                 1024};
    };
    item.createdAt = usual(item.createdAt);
    if (item.dueDate)
        item.dueDate = usual(*item.dueDate);
    if (item.completedAt)
        item.completedAt = usual(*item.completedAt);
    return item;
}

RC_GTEST_PROP(StoredItemsSurvey, FindsEveryTaskOfAListAsWeWriteIt, ()) {
    std::vector<TodoItem> items;
    for (const TodoItem& item : *rc::gen::arbitrary<std::vector<TodoItem>>())
        items.push_back(ordinary(item));
    const std::size_t largest = *rc::gen::inRange<std::size_t>(1, 5);
    const std::string bytes = *encodeStoredItems(items);
    const auto stretches = surveyStoredItems(bytes, largest);
    RC_ASSERT(stretches.has_value());
    RC_ASSERT(stretches->size() == (items.size() + largest - 1) / largest);
    expectAgreement(bytes, *stretches, largest);
}

RC_GTEST_PROP(StoredItemsSurvey, NeverFindsWhatDecodingDoesNot, ()) {
    const auto items = *rc::gen::arbitrary<std::vector<TodoItem>>();
    std::string bytes = *encodeStoredItems(items);
    for (int changes = *rc::gen::inRange(1, 4); changes > 0; --changes) {
        const std::size_t place = *rc::gen::inRange<std::size_t>(0, bytes.size());
        const char with =
            *rc::gen::elementOf(std::string("\"\\{}[],:0123456789aAeE.+-tfnu \n\x01\x7F\xC3\xFF"));
        switch (*rc::gen::inRange(0, 3)) {
        case 0:
            bytes[place] = with;
            break;
        case 1:
            bytes.insert(place, 1, with);
            break;
        default:
            bytes.erase(place, 1);
        }
        if (bytes.empty())
            break;
    }
    if (const auto stretches = surveyStoredItems(bytes, 3))
        expectAgreement(bytes, *stretches, 3);
}

TEST(StoredItemsSurvey, ReadsTheEmptyList) {
    const auto stretches = surveyStoredItems("[]", 256);
    ASSERT_TRUE(stretches);
    EXPECT_TRUE(stretches->empty());
}

TEST(StoredItemsSurvey, LeavesWhatIsWrittenInAnotherWayToDecoding) {
    const std::string id = R"({"id":"00000000-0000-0000-0000-00000000002A",)";
    const std::string rest = R"("title":"t","isDone":false,"createdAt":1})";
    ASSERT_TRUE(surveyStoredItems("[" + id + rest + "]", 256));
    for (
        const std::string& bytes : std::vector<std::string>{
            " [" + id + rest + "]",                                      // blanks
            "[" + id + rest + "]\n",                                     //
            "[" + id + R"( "title":"t","isDone":false,"createdAt":1}])", //
            R"([{"title":"t","id":"00000000-0000-0000-0000-00000000002A","isDone":false,"createdAt":1}])", // order
            R"([{"id":"00000000-0000-0000-0000-00000000002a",)" + rest + "]",          // lower case
            "[" + id + R"("title":"t","isDone":false,"dueDate":null,"createdAt":1}])", // null
            "[" + id + R"("title":"t","isDone":false,"createdAt":1,"colour":"red"}])", // unknown key
            "[" + id + R"("title":"\u20ac","isDone":false,"createdAt":1}])",           // escapes
            "[" + id + R"("title":"t","isDone":false,"createdAt":1e200}])",            // exponents
        }) {
        EXPECT_FALSE(surveyStoredItems(bytes, 256)) << bytes;
        EXPECT_TRUE(decodeStoredItems(bytes)) << bytes;
    }
}

TEST(StoredItemsSurvey, RefusesWhatIsDamaged) {
    const std::string id = R"({"id":"00000000-0000-0000-0000-00000000002A",)";
    const std::string rest = R"("title":"t","isDone":false,"createdAt":1})";
    for (const std::string& bytes : std::vector<std::string>{
             std::string(),
             std::string("["),
             std::string("[]]"),
             "[" + id + rest,
             "[" + id + rest + ",]",
             "[" + id + rest + "]x",
             "[" + id + rest + id + rest + "]",
             "[" + id + R"("title":"t)" + "\n" + R"(","isDone":false,"createdAt":1}])",
             "[" + id + R"("title":"\x","isDone":false,"createdAt":1}])",
             "[" + id + R"("title":"\u00g0","isDone":false,"createdAt":1}])",
             "[" + id + "\"title\":\"\xC3\x28\",\"isDone\":false,\"createdAt\":1}]",
             "[" + id + R"("title":"t","isDone":0,"createdAt":1}])",
             "[" + id + R"("title":"t","isDone":false,"createdAt":01}])",
             "[" + id + R"("title":"t","isDone":false,"createdAt":1.}])",
             "[" + id + R"("title":"t","isDone":false,"createdAt":-}])",
             "[" + id + R"("title":"t","isDone":false,"createdAt":1e}])",
             "[" + id + R"("title":"t","isDone":false,"createdAt":"1"}])",
             "[" + id + R"("title":"t","isDone":false}])",
         }) {
        EXPECT_FALSE(surveyStoredItems(bytes, 256)) << bytes;
        EXPECT_FALSE(decodeStoredItems(bytes)) << bytes;
    }
}

} // namespace
} // namespace quillo
