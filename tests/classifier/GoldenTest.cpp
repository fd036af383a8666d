/// The program holds the same network as the trainer: on 500 texts it sees the same, believes the same and
/// answers the same. training/retrain writes golden.jsonl.
#include "classifier/Answer.h"
#include "classifier/Features.h"
#include "classifier/Impressions.h"
#include "classifier/Network.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <span>
#include <string>

namespace quillo::classifier {
namespace {

constexpr float tolerance = 1e-3F;

std::string textOf(const rapidjson::Value& value) {
    return {value.GetString(), value.GetStringLength()};
}

void expectFeatures(const Features& features, const rapidjson::Value& expected) {
    std::vector<std::size_t> characters;
    for (const auto& character : expected[2].GetArray())
        characters.push_back(character.GetUint());
    EXPECT_EQ(features.characters, characters);
    EXPECT_EQ(features.value, expected[3].GetUint());
    EXPECT_EQ(features.word, expected[4].GetUint());
    unsigned flags = 0;
    for (const bool flag : features.flags)
        flags = flags * 2 + (flag ? 1 : 0);
    EXPECT_EQ(flags, expected[5].GetUint());
}

void expectBest(std::span<const float> head, const rapidjson::Value& expected) {
    const auto highest = std::max_element(head.begin(), head.end());
    EXPECT_NEAR(*highest, expected[1].GetFloat(), tolerance);
    EXPECT_NEAR(head[expected[0].GetUint()], *highest, tolerance);
}

ModelReference referenceOf(const rapidjson::Value& line) {
    ModelReference reference;
    const std::string now = textOf(line["now"]);
    EXPECT_EQ(std::sscanf(now.c_str(), "%d-%d-%dT%d:%d", &reference.year, &reference.month, &reference.day,
                          &reference.hour, &reference.minute),
              5);
    reference.locale = textOf(line["locale"]);
    return reference;
}

void expectSame(const rapidjson::Value& line) {
    const std::string text = textOf(line["text"]);
    const std::vector<Token> tokens = tokenize(text);
    const auto& expected = line["tokens"];
    ASSERT_EQ(tokens.size(), expected.Size());
    if (tokens.empty())
        return;
    const Weights& weights = programWeights();
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const auto& token = expected[static_cast<rapidjson::SizeType>(i)];
        EXPECT_EQ(tokens[i].start, token[0].GetUint());
        EXPECT_EQ(tokens[i].end, token[1].GetUint());
        expectFeatures(featuresOf(weights, text, tokens, i), token);
    }

    const Impression impression = look(weights, text, tokens);
    for (rapidjson::SizeType i = 0; i < expected.Size(); ++i)
        expectBest(impression.roles[i], line["roles"][i]);
    for (rapidjson::SizeType kind = 0; kind < line["kind"].Size(); ++kind)
        EXPECT_NEAR(impression.kind.at(kind), line["kind"][kind].GetFloat(), tolerance);
    expectBest(impression.amount, line["best"]["amount"]);
    expectBest(impression.month, line["best"]["month"]);
    expectBest(impression.day, line["best"]["day"]);
    expectBest(impression.hour, line["best"]["hour"]);
    expectBest(impression.minute, line["best"]["minute"]);
    expectBest(impression.shift, line["best"]["shift"]);

    const Answer answer = answerTo(weights, text, tokens, impression, referenceOf(line));
    EXPECT_EQ(answer.kind, textOf(line["answer"]["kind"]));
    EXPECT_EQ(answer.amount, line["answer"]["amount"].GetInt());
    EXPECT_EQ(answer.month, line["answer"]["month"].GetInt());
    EXPECT_EQ(answer.day, line["answer"]["day"].GetInt());
    EXPECT_EQ(answer.hasTime, line["answer"]["hasTime"].GetBool());
    EXPECT_EQ(answer.hour, line["answer"]["hour"].GetInt());
    EXPECT_EQ(answer.minute, line["answer"]["minute"].GetInt());
    EXPECT_EQ(answer.title, textOf(line["answer"]["title"]));
    EXPECT_NEAR(answer.score, line["score"].GetDouble(), 1e-3);
}

TEST(Golden, ProgramAndTrainerAgree) {
    std::ifstream file(QUILLO_TESTS_FOLDER "/classifier/golden.jsonl");
    std::size_t count = 0;
    for (std::string text; std::getline(file, text); ++count) {
        rapidjson::Document line;
        ASSERT_FALSE(line.Parse(text.c_str()).HasParseError());
        SCOPED_TRACE(textOf(line["text"]));
        expectSame(line);
    }
    EXPECT_GE(count, 500U);
}

} // namespace
} // namespace quillo::classifier
