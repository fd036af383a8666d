#include "model/TodoItemJson.h"
#include "support/ArbitraryTodoItem.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace quillo {
namespace {

using namespace std::string_literals;
using support::numberedId;
using support::Task;

constexpr std::string_view idText = "00000000-0000-0000-0000-00000000002A";

/// A list of one object with the required keys and whatever else is given.
std::string listWith(const std::string& more) {
    return R"([{"id":")" + std::string(idText) + R"(","title":"t","isDone":false,"createdAt":1)" + more +
           "}]";
}

std::string encoded(const std::vector<TodoItem>& items) {
    return encodeStoredItems(items).value_or("not encoded");
}

TodoItem decodedOne(std::string_view bytes) {
    const auto items = decodeStoredItems(bytes);
    if (!items || items->size() != 1) {
        ADD_FAILURE() << "not a list of one: " << bytes;
        return {};
    }
    return items->front();
}

// Writing.

TEST(StoredItems, WritesATaskWithoutAnythingOptionalWithFourKeys) {
    EXPECT_EQ(
        encoded({Task("Call mom").id(numberedId(42)).made({0.5})}),
        R"([{"id":"00000000-0000-0000-0000-00000000002A","title":"Call mom","isDone":false,"createdAt":0.5}])");
}

TEST(StoredItems, WritesAllKeysInTheOrderOfTheFields) {
    const TodoItem item = Task("t").id(numberedId(0xAB)).due({3}).made({1}).done({2}).reminder("quillo.x");
    EXPECT_EQ(encoded({item}),
              R"([{"id":"00000000-0000-0000-0000-0000000000AB","title":"t","isDone":true,)"
              R"("dueDate":3.0,"createdAt":1.0,"completedAt":2.0,"notificationID":"quillo.x"}])");
}

TEST(StoredItems, WritesAnEmptyListAsAnEmptyArray) {
    EXPECT_EQ(encoded({}), "[]");
}

TEST(StoredItems, KeepsTheOrderOfTheList) {
    const auto items = decodeStoredItems(encoded({Task("a"), Task("b"), Task("c")}));
    ASSERT_TRUE(items);
    EXPECT_EQ(support::titles(*items), (std::vector<std::string>{"a", "b", "c"}));
}

TEST(StoredItems, AnEmptyTitleIsAValue) {
    EXPECT_EQ(decodedOne(encoded({Task("")})).title, "");
}

TEST(StoredItems, WritesTextThatIsNotUtf8WithReplacementCharacters) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"caf\xC3\xA9 \xFF!", "caf\xC3\xA9 \xEF\xBF\xBD!"},                       // a byte that never occurs
        {"cut \xE2\x82", "cut \xEF\xBF\xBD\xEF\xBF\xBD"},                         // cut in the middle
        {"\xC0\xAF", "\xEF\xBF\xBD\xEF\xBF\xBD"},                                 // longer than needed
        {"\xED\xA0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},                 // half of a surrogate pair
        {"\xF4\x90\x80\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}, // beyond U+10FFFF
        {"\x80", "\xEF\xBF\xBD"},
    };
    for (const auto& [bad, good] : cases) {
        const TodoItem item = decodedOne(encoded({Task(bad).reminder(bad)}));
        EXPECT_EQ(item.title, good);
        EXPECT_EQ(item.notificationID, good);
    }
}

TEST(StoredItems, AreNotWrittenWithAnInstantThatIsNotFinite) {
    for (const double bad :
         {std::nan(""), std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(encodeStoredItems(std::vector<TodoItem>{Task("fine"), Task("t").made({bad})}),
                  std::nullopt);
        EXPECT_EQ(encodeStoredItems(std::vector<TodoItem>{Task("t").due({bad}), Task("fine")}), std::nullopt);
        EXPECT_EQ(encodeStoredItems(std::vector<TodoItem>{Task("t").done({bad})}), std::nullopt);
    }
}

// There and back.

void expectSameBits(double left, double right) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(left), std::bit_cast<std::uint64_t>(right))
        << left << " against " << right;
}

TEST(StoredItems, KeepEveryBitOfAnInstant) {
    const double least = std::numeric_limits<double>::denorm_min();
    for (const double seconds :
         {0.0, -0.0, 0.1, 1e22, 1e23, -1.0 / 3, 772345678.123456, 9007199254740993.0, least, -least,
          std::numeric_limits<double>::min(), std::numeric_limits<double>::max(), 2.2250738585072011e-308,
          5e-324, 123456789012345680.0, 1e21, 1e-7})
        expectSameBits(decodedOne(encoded({Task("t").made({seconds})})).createdAt.secondsSince2001, seconds);
}

RC_GTEST_PROP(StoredItems, ReadBackEqualToWhatWasWritten, (const std::vector<TodoItem>& items)) {
    const auto bytes = encodeStoredItems(items);
    RC_ASSERT(bytes.has_value());
    const auto read = decodeStoredItems(*bytes);
    RC_ASSERT(read.has_value());
    RC_ASSERT(*read == items);
    RC_ASSERT(encodeStoredItems(*read) == bytes);
}

RC_GTEST_PROP(StoredItems, KeepEveryBitOfAnyInstant, (const std::vector<Instant>& instants)) {
    std::vector<TodoItem> items(instants.size());
    for (std::size_t i = 0; i < instants.size(); ++i)
        items[i].createdAt = instants[i];
    const auto read = decodeStoredItems(*encodeStoredItems(items));
    RC_ASSERT(read && read->size() == instants.size());
    for (std::size_t i = 0; i < instants.size(); ++i)
        RC_ASSERT(std::bit_cast<std::uint64_t>((*read)[i].createdAt.secondsSince2001) ==
                  std::bit_cast<std::uint64_t>(instants[i].secondsSince2001));
}

/// Any bytes at all as a title: the list stays readable, and what was well-formed stays as it was.
RC_GTEST_PROP(StoredItems, StayReadableWhateverATitleHolds, (const std::vector<std::uint8_t>& bytes)) {
    const auto read = decodeStoredItems(
        *encodeStoredItems(std::vector<TodoItem>{Task(std::string(bytes.begin(), bytes.end()))}));
    RC_ASSERT(read.has_value());
    const std::string& once = read->front().title;
    RC_ASSERT(decodeStoredItems(*encodeStoredItems(*read))->front().title == once);
}

// Reading what others wrote.

TEST(StoredItems, ReadKeysInAnyOrderWithAnySpacing) {
    const TodoItem item = decodedOne(
        "\n [ {\t\"notificationID\" : \"r\", \"createdAt\":1,\"completedAt\": 2.5e0 ,\"dueDate\":-3,\r\n"
        "\"isDone\":true,\"title\":\"t\",\"id\":\"00000000-0000-0000-0000-00000000002A\"} ] \n");
    EXPECT_EQ(item, TodoItem(Task("t").id(numberedId(42)).made({1}).due({-3}).done({2.5}).reminder("r")));
}

TEST(StoredItems, ReadIdsInEitherCase) {
    const TodoItem item = decodedOne(
        R"([{"id":"abcdefab-cdef-ABCD-EFab-00000000002a","title":"t","isDone":false,"createdAt":1}])");
    EXPECT_EQ(item.id.toString(), "ABCDEFAB-CDEF-ABCD-EFAB-00000000002A");
}

TEST(StoredItems, ReadEscapesInKeysAndValues) {
    const TodoItem item = decodedOne(
        R"([{"\u0069d":"\u0030\u0030000000-0000-0000-0000-00000000002A",)"
        R"("\u0074itle":"\"\\\/\b\f\n\r\t\u0000\u00e9\ud83d\ude00","isDone":false,"createdAt":1}])");
    EXPECT_EQ(item.id, numberedId(42));
    EXPECT_EQ(item.title, "\"\\/\b\f\n\r\t\0\xC3\xA9\xF0\x9F\x98\x80"s);
}

TEST(StoredItems, TakeNullInThePlaceOfAnOptionalValueAsAbsent) {
    const TodoItem item =
        decodedOne(listWith(R"(,"dueDate":null,"completedAt": null ,"notificationID":null)"));
    EXPECT_EQ(item, TodoItem(Task("t").id(numberedId(42)).made({1})));
}

TEST(StoredItems, SkipUnknownKeysWhateverTheyHold) {
    for (const std::string value :
         {R"(1)", R"(-1.5e3)", R"("x\u0041\n")", R"(true)", R"(false)", R"(null)", R"({})", R"([])",
          R"({"id":"no id","dueDate":[]})", R"([[],{},[1,"a",{"b":[null,true]}]])",
          R"(12345678901234567890123456789)"})
        EXPECT_EQ(decodedOne(listWith(",\"colour\":" + value)).title, "t") << value;
    EXPECT_EQ(decodedOne(listWith(R"(,"":1,"Title":2,"ID":3,"titles":4)")).title, "t");
}

TEST(StoredItems, TakeTheLastOfAKeyGivenTwice) {
    EXPECT_EQ(decodedOne(listWith(R"(,"title":"second")")).title, "second");
    EXPECT_EQ(decodedOne(listWith(R"(,"dueDate":5,"dueDate":null)")).dueDate, std::nullopt);
}

TEST(StoredItems, KeepTasksWithEqualIds) {
    const auto items =
        decodeStoredItems(encoded({Task("first").id(numberedId(1)), Task("second").id(numberedId(1))}));
    ASSERT_TRUE(items);
    EXPECT_EQ(support::titles(*items), (std::vector<std::string>{"first", "second"}));
}

TEST(StoredItems, ReadAnEmptyList) {
    for (const std::string_view bytes : {"[]", " [ ] ", "[\n]\n"}) {
        const auto items = decodeStoredItems(bytes);
        ASSERT_TRUE(items) << bytes;
        EXPECT_TRUE(items->empty());
    }
}

TEST(StoredItems, BoundHowDeepUnknownValuesMayBeNested) {
    const auto nested = [](std::size_t depth) {
        return listWith(",\"x\":" + std::string(depth, '[') + std::string(depth, ']'));
    };
    EXPECT_TRUE(decodeStoredItems(nested(64)));
    EXPECT_FALSE(decodeStoredItems(nested(65)));
    EXPECT_FALSE(decodeStoredItems(nested(1'000'000)));
    EXPECT_FALSE(decodeStoredItems(std::string(1'000'000, '[')));
}

void expectUnreadable(const std::vector<std::string>& lists) {
    for (const std::string& list : lists)
        EXPECT_EQ(decodeStoredItems(list), std::nullopt) << list;
}

TEST(StoredItems, ThatAreNoListAreUnreadable) {
    expectUnreadable({"",      " ",     "null",           "1",    "\"text\"", "true",   "{}",      "[",
                      "]",     "[]]",   "[[]]",           "[,]",  "[1]",      "[null]", "[\"a\"]", "[{}]",
                      "[{},]", "tasks", "\xEF\xBB\xBF[]", "[] x", "[],",      "[][]",   "[]\\",    "[]\"",
                      "[]\0"s, "\0"s,   "[] // nothing"});
}

/// The good list with one thing changed.
std::string goodBut(std::string_view what, std::string_view instead) {
    std::string list = listWith("");
    const std::size_t at = list.find(what);
    EXPECT_NE(at, std::string::npos);
    return list.replace(at, what.size(), instead);
}

TEST(StoredItems, WithoutARequiredKeyOfItsTypeAreUnreadable) {
    expectUnreadable({goodBut("\"id\"", "\"Id\""),
                      goodBut("\"title\"", "\"name\""),
                      goodBut("\"isDone\"", "\"done\""),
                      goodBut("\"createdAt\"", "\"created\""),
                      goodBut("\"t\"", "null"),
                      goodBut("\"t\"", "1"),
                      goodBut("\"t\"", "[\"t\"]"),
                      goodBut("\"t\"", "{}"),
                      goodBut("false", "0"),
                      goodBut("false", "\"false\""),
                      goodBut("false", "null"),
                      goodBut("false", "False"),
                      goodBut(":1", ":\"1\""),
                      goodBut(":1", ":null"),
                      goodBut(":1", ":true"),
                      goodBut(":1", ":\"2001-01-01T00:00:00Z\""),
                      goodBut(idText, ""),
                      goodBut(idText, "42"),
                      goodBut(idText, "00000000000000000000000000000000002A"),
                      goodBut(idText, "00000000-0000-0000-0000-00000000002"),
                      goodBut(idText, "00000000-0000-0000-0000-00000000002A0"),
                      goodBut(idText, "{0000000-0000-0000-0000-00000000002}"),
                      goodBut(idText, "0000000G-0000-0000-0000-00000000002A"),
                      goodBut("\"" + std::string(idText) + "\"", "42"),
                      goodBut("\"" + std::string(idText) + "\"", "null")});
}

TEST(StoredItems, WithAMistypedOptionalKeyAreUnreadable) {
    expectUnreadable({listWith(R"(,"dueDate":"1")"), listWith(R"(,"dueDate":true)"),
                      listWith(R"(,"dueDate":{})"), listWith(R"(,"completedAt":"2001-01-01T00:00:00Z")"),
                      listWith(R"(,"completedAt":[])"), listWith(R"(,"notificationID":1)"),
                      listWith(R"(,"notificationID":false)"), listWith(R"(,"dueDate":nul)"),
                      listWith(R"(,"dueDate":nulll)"), listWith(R"(,"title":"ok","title":1)")});
}

TEST(StoredItems, ThatAreDamagedAreUnreadable) {
    expectUnreadable({goodBut("}]", ""),
                      goodBut("}]", "}"),
                      goodBut("}]", "]"),
                      goodBut("}]", "]}"),
                      goodBut("[{", "{"),
                      goodBut("}]", "},]"),
                      goodBut("}]", "} {}]"),
                      goodBut("}]", ",}]"),
                      goodBut(",\"title\"", "\"title\""),
                      goodBut(",\"title\"", ",,\"title\""),
                      goodBut("\"title\":", "\"title\""),
                      goodBut("\"title\":", "title:"),
                      goodBut("\"title\":", "\"title\"::"),
                      goodBut("\"title\"", "'title'"),
                      goodBut("\"t\"", "'t'"),
                      goodBut("\"t\"", "\"t"),
                      goodBut("\"t\"", "t\""),
                      goodBut("\"t\"", "\"t\"x"),
                      goodBut("\"t\"", "\"t\"\"u\""),
                      goodBut("\"t\"", "\"\\x\""),
                      goodBut("\"t\"", "\"\\u12\""),
                      goodBut("\"t\"", "\"\\ud800\""),
                      goodBut("\"t\"", "\"\\udc00\""),
                      goodBut("\"t\"", "\"a\nb\""),
                      goodBut("\"t\"", "\"a\tb\""),
                      goodBut("\"t\"", "\"\0\""s),
                      goodBut("\"t\"", "\"\xFF\""),
                      goodBut("\"t\"", "\"\xC3\""),
                      goodBut("\"t\"", "\"\xED\xA0\x80\""),
                      goodBut("false", "falsey"),
                      goodBut("false", "fals"),
                      goodBut("false", "false true"),
                      goodBut(":1", ":01"),
                      goodBut(":1", ":1."),
                      goodBut(":1", ":.5"),
                      goodBut(":1", ":+1"),
                      goodBut(":1", ":-"),
                      goodBut(":1", ":1e"),
                      goodBut(":1", ":1e999"),
                      goodBut(":1", ":0x1"),
                      goodBut(":1", ":NaN"),
                      goodBut(":1", ":Infinity"),
                      goodBut(":1", ":1 2"),
                      goodBut(":1", ":1x"),
                      goodBut(":1", ":1\"\""),
                      goodBut("[{", "[/**/{"),
                      goodBut("}]", "}] "s + '\0'),
                      goodBut("}]", "}]\xFF")});
}

/// Behind a key that nobody reads: damage there must not go unnoticed either.
TEST(StoredItems, WithDamageBehindAnUnknownKeyAreUnreadable) {
    expectUnreadable({listWith(R"(,"x":)"),         listWith(R"(,"x")"),
                      listWith(R"(,"x":tru)"),      listWith(R"(,"x":truee)"),
                      listWith(R"(,"x":nul)"),      listWith(R"(,"x":nulls)"),
                      listWith(R"(,"x":01)"),       listWith(R"(,"x":1.)"),
                      listWith(R"(,"x":-)"),        listWith(R"(,"x":1x)"),
                      listWith(R"(,"x":"\q")"),     listWith(R"(,"x":"\ud800")"),
                      listWith(R"(,"\q":1)"),       listWith(R"(,"\ud800":1)"),
                      listWith(R"(,x:1)"),          listWith(R"(,"x":[1 2])"),
                      listWith(R"(,"x":[1,])"),     listWith(R"(,"x":[,1])"),
                      listWith(R"(,"x":[1})"),      listWith(R"(,"x":{"y"})"),
                      listWith(R"(,"x":{"y":})"),   listWith(R"(,"x":{"y":1,})"),
                      listWith(R"(,"x":{"y" 1})"),  listWith(R"(,"x":{1:1})"),
                      listWith(R"(,"x":{"\q":1})"), listWith(R"(,"x":[{"y":[tru]}])"),
                      listWith(R"(,"x":[)"),        listWith(R"(,"x":{)"),
                      listWith(R"(,"x":[[])"),      listWith(R"(,"x":{"y":1]})"),
                      listWith(R"(,"x":@)"),        listWith(",\"x\":\"\xFF\""),
                      listWith(",\"\xFF\":1"),      listWith(R"(,"x":[1]])")});
}

TEST(StoredItems, AreReadAllOrNotAtAll) {
    std::string list = encoded({Task("a"), Task("b"), Task("c")});
    ASSERT_TRUE(decodeStoredItems(list));
    list.replace(list.rfind("\"isDone\":false"), 14, "\"isDone\":5    ");
    EXPECT_EQ(decodeStoredItems(list), std::nullopt);
}

TEST(StoredItems, CutAnywhereAreUnreadable) {
    const std::string list = encoded({Task("caf\xC3\xA9").due({1}).done({2}).reminder("r"), Task("b")});
    for (std::size_t length = 0; length < list.size(); ++length)
        EXPECT_EQ(decodeStoredItems(std::string_view(list).substr(0, length)), std::nullopt) << length;
}

/// One byte changed somewhere in a good list: never a crash, and what is still read is still written.
RC_GTEST_PROP(StoredItems, WithAnyByteChangedAreEitherReadOrNot,
              (const std::vector<TodoItem>& items, std::uint8_t byte)) {
    std::string bytes = *encodeStoredItems(items);
    bytes[*rc::gen::inRange<std::size_t>(0, bytes.size())] = static_cast<char>(byte);
    if (const auto read = decodeStoredItems(bytes))
        RC_ASSERT(decodeStoredItems(*encodeStoredItems(*read)) == read);
}

} // namespace
} // namespace quillo
