#include "control/Answer.h"

#include "support/ArbitraryTodoItem.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace quillo;
using namespace quillo::control;
using quillo::support::Task;

namespace {

const char* const unreadable =
    "the running Quillo gave an answer that cannot be read; perhaps it is of another version";

TEST(Answer, ErrorsComeBack) {
    const std::string line = encode(Answer(Error{"no task \"7\""}));
    EXPECT_EQ(line, "{\"error\":\"no task \\\"7\\\"\"}\n");
    const Answer back = decodeAnswer(line);
    ASSERT_FALSE(back);
    EXPECT_EQ(back.error().message, "no task \"7\"");
}

TEST(Answer, TasksComeBackToTheLastBit) {
    const Answer answer(std::vector<NumberedItem>{
        {1, Task("Call mom").made({757382400.123456789}).due({757468800.25}).reminder("quillo.X")},
        {77, Task("\"\n\U0001F438").done({1e-9})}});
    const std::string line = encode(answer);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    const Answer back = decodeAnswer(line);
    ASSERT_TRUE(back) << back.error().message;
    EXPECT_EQ(*back, *answer);
}

TEST(Answer, MayBeAboutNothing) {
    const Answer back = decodeAnswer(encode(Answer(std::vector<NumberedItem>{})));
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->empty());
}

RC_GTEST_PROP(Answer, CarriesAnyTasks, (const std::vector<TodoItem>& items)) {
    std::vector<NumberedItem> tasks;
    for (const TodoItem& item : items)
        tasks.push_back({tasks.size() * 3 + 1, item});
    const Answer back = decodeAnswer(encode(Answer(tasks)));
    RC_ASSERT(back.ok());
    RC_ASSERT(*back == tasks);
}

TEST(Answer, IsAnErrorWhereItCannotBeRead) {
    for (const char* line : {"", "{", "[]", "{}", "hello", R"({"numbers":[1],"tasks":[]})",
                             R"({"numbers":[],"tasks":[{}]})", R"({"numbers":["1"],"tasks":[]})",
                             "{\x02\"error\":\"no task 7", R"({"numbers":[]})", R"({"tasks":[]})"}) {
        const Answer answer = decodeAnswer(line);
        ASSERT_FALSE(answer) << line;
        EXPECT_EQ(answer.error().message, unreadable) << line;
    }
}

} // namespace
