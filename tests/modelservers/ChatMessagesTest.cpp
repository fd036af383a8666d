#include "modelservers/ChatMessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <simdjson.h>

#include <array>
#include <cstdint>
#include <limits>

namespace quillo {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;
using Value = GeneratedContent::Value;

constexpr std::array<std::string_view, 2> buckets{"NONE", "TODAY"};
const std::array<PropertyGuide, 3> form{
    PropertyGuide{"kind", PropertyGuide::Type::Text, buckets, "Pick \"one\"."},
    PropertyGuide{"amount", PropertyGuide::Type::Integer, {}, "How many."},
    PropertyGuide{"hasTime", PropertyGuide::Type::Boolean, {}, "Whether."},
};

/// What a server sends whose model says that, a JSON string.
std::string bodyWith(std::string_view contentJson) {
    return R"({"choices":[{"index":0,"message":{"role":"assistant","content":)" + std::string(contentJson) +
           R"(},"finish_reason":"stop"}],"usage":{"total_tokens":12}})";
}

Result<GeneratedContent> readSaying(std::string_view saying) {
    std::string json = "\"";
    for (const char c : saying)
        json += c == '"' || c == '\\' ? std::string{'\\', c} : c == '\n' ? "\\n" : std::string{c};
    return readAnswer(bodyWith(json + "\""));
}

std::string complaintAboutSaying(std::string_view saying) {
    const Result<GeneratedContent> content = readSaying(saying);
    return content ? "none" : content.error().message;
}

TEST(ChatQuestion, IsWrittenInThePublishedForm) {
    EXPECT_EQ(
        encodeQuestion({"small", "Be \"strict\".", "call mom ümläut", form}),
        R"({"model":"small","messages":[{"role":"system","content":"Be \"strict\"."},)"
        R"({"role":"user","content":"call mom ümläut"}],"stream":false,)"
        R"("response_format":{"type":"json_schema","json_schema":{"name":"todo","strict":true,"schema":)"
        R"({"type":"object","properties":{)"
        R"("kind":{"type":"string","enum":["NONE","TODAY"],"description":"Pick \"one\"."},)"
        R"("amount":{"type":"integer","description":"How many."},)"
        R"("hasTime":{"type":"boolean","description":"Whether."}},)"
        R"("required":["kind","amount","hasTime"],"additionalProperties":false}}}})");
}

TEST(ChatQuestion, DescribesTheFormInWordsWhereThatIsWanted) {
    EXPECT_THAT(encodeQuestion({"m", "Begin.", "p", form, true}),
                HasSubstr(R"("content":"Begin.\n\nAnswer with one JSON object that has these properties, )"
                          R"(in this order:\n- kind (string): Pick \"one\".\n- amount (integer): How many.\n)"
                          R"(- hasTime (boolean): Whether.\n"})"));
}

TEST(ChatQuestion, IsJsonWhateverIsTyped) {
    simdjson::dom::parser parser;
    const std::string question = encodeQuestion({"\x01", "a\nb", "\"}],\"x\":[{\"\\", form});
    std::string_view prompt;
    ASSERT_EQ(parser.parse(question)["messages"].at(1)["content"].get_string().get(prompt),
              simdjson::SUCCESS);
    EXPECT_EQ(prompt, "\"}],\"x\":[{\"\\");
}

TEST(ChatAnswer, GivesThePropertiesInTheirOrder) {
    const auto content = readSaying(R"( {"title":"Call \"mom\"", "amount":-3, "hasTime":true} )");
    ASSERT_TRUE(content) << content.error().message;
    EXPECT_THAT(content->properties,
                ElementsAre(Pair("title", Value("Call \"mom\"")), Pair("amount", Value(std::int64_t{-3})),
                            Pair("hasTime", Value(true))));
    EXPECT_EQ(content->score, std::nullopt);
}

TEST(ChatAnswer, IsHandedOnWhateverItsPropertiesAre) {
    const auto content = readSaying(R"({"kind":"NEXT_WEEK","kind":7,"more":"x"})");
    ASSERT_TRUE(content) << content.error().message;
    EXPECT_THAT(content->properties,
                ElementsAre(Pair("kind", Value("NEXT_WEEK")), Pair("kind", Value(std::int64_t{7})),
                            Pair("more", Value("x"))));
    const auto empty = readSaying("{}");
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->properties.empty());
}

TEST(ChatAnswer, TakesWholeNumbersOf64BitsOnly) {
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    const auto content = readSaying(R"({"amount":-9223372036854775808})");
    ASSERT_TRUE(content);
    EXPECT_THAT(content->properties, ElementsAre(Pair("amount", Value(least))));
    for (const char* number :
         {"3.0", "3.5", "3e0", "1E2", "9223372036854775808", "-9223372036854775809", "NaN"})
        EXPECT_FALSE(readSaying("{\"amount\":" + std::string(number) + "}")) << number;
}

TEST(ChatAnswer, IsNoneWhereTheModelDoesNotKeepToTheForm) {
    const std::string complaint = "its model does not keep to the form";
    for (const char* saying :
         {"", " ", "I cannot help with that.", R"(Sure: {"kind":"NONE"})",
          "```json\n{\"kind\":\"NONE\"}\n```", R"({"kind":"NONE"} is it)",
          R"({"kind":"NONE"}{"kind":"NONE"})", R"([{"kind":"NONE"}])", R"("NONE")", "null", "7", "{",
          R"({"kind":"NONE",})", R"({'kind':'NONE'})", R"({"kind":"\ud800"})"})
        EXPECT_EQ(complaintAboutSaying(saying), complaint) << saying;
    const std::string types = "its model does not keep to the types of the form";
    for (const char* saying : {R"({"kind":null})", R"({"kind":["NONE"]})", R"({"kind":{"is":"NONE"}})"})
        EXPECT_EQ(complaintAboutSaying(saying), types) << saying;
}

TEST(ChatAnswer, IsNoneWhereItIsNestedTooDeeply) {
    const std::string deep(100'000, '[');
    EXPECT_FALSE(readAnswer(deep));
    EXPECT_FALSE(readSaying("{\"kind\":" + deep));
    EXPECT_FALSE(readSaying("{\"kind\":" + std::string(500, '[') + std::string(500, ']') + "}"));
}

TEST(ChatAnswer, IsNoneWhereThereIsNoText) {
    for (const char* body :
         {"", "null", "[]", "{}", "{]", R"({"error":{"message":"no"}})", R"({"choices":[]})",
          R"({"choices":{"0":{}}})", R"({"choices":[{"message":"{}"}]})", R"({"choices":[{"text":"{}"}]})"})
        EXPECT_FALSE(readAnswer(body)) << body;
    for (const char* content : {"null", "7", R"([{"type":"text","text":"{}"}])", R"({"kind":"NONE"})",
                                R"(null,"refusal":"I will not.")",
                                R"(null,"tool_calls":[{"type":"function","function":{"name":"f"}}])"}) {
        const auto read = readAnswer(bodyWith(content));
        ASSERT_FALSE(read) << content;
        EXPECT_EQ(read.error().message, "its answer holds no text") << content;
    }
    EXPECT_FALSE(readAnswer(bodyWith("\"{\\\"title\\\":\\\"caf\xE9\\\"}\""))); // Not UTF-8.
}

TEST(WarmUp, IsWrittenAsEachServerWantsIt) {
    EXPECT_EQ(encodeLoading("a:b"), R"({"model":"a:b","messages":[],"stream":false})");
    EXPECT_EQ(encodeReadAhead("m", "Be strict."),
              R"({"model":"m","messages":[{"role":"system","content":"Be strict."},)"
              R"({"role":"user","content":"."}],"stream":false,"max_tokens":1})");
    EXPECT_TRUE(isOllamaVersion(R"({"version":"0.12.0"})"));
    for (const char* other : {"", "{}", R"({"error":"Unexpected endpoint"})", R"({"version":1})", R"("0.1")"})
        EXPECT_FALSE(isOllamaVersion(other)) << other;
}

} // namespace
} // namespace quillo
