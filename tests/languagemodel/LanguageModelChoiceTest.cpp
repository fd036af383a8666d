#include "languagemodel/LanguageModelChoice.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <utility>

namespace quillo {
namespace {

TEST(LanguageModelChoice, ComesBackAsItWasWritten) {
    for (const auto& [text, choice] : std::initializer_list<std::pair<const char*, LanguageModelChoice>>{
             {"embedded", EmbeddedModel{}},
             {"none", NoModel{}},
             {"http://127.0.0.1:8080", ServedModel{"http://127.0.0.1:8080"}},
             {"http://[::1]:8080 llama3.2:3b", ServedModel{"http://[::1]:8080", "llama3.2:3b"}},
             {"http://localhost /my models/größer.gguf",
              ServedModel{"http://localhost", "/my models/größer.gguf"}},
             {"--schema-in-prompt http://localhost", ServedModel{"http://localhost", "", true}},
             {"--schema-in-prompt http://localhost a b", ServedModel{"http://localhost", "a b", true}},
         }) {
        const auto read = readLanguageModelChoice(text);
        ASSERT_TRUE(read) << text << ": " << read.error().message;
        EXPECT_TRUE(*read == choice) << text;
        EXPECT_EQ(toText(*read), text);
    }
}

TEST(LanguageModelChoice, IsReadAsItIsTyped) {
    EXPECT_EQ(toText(*readLanguageModelChoice("localhost:11434/v1/ qwen")), "http://localhost:11434 qwen");
    EXPECT_EQ(toText(*readLanguageModelChoice("http://localhost ")), "http://localhost");
}

TEST(LanguageModelChoice, IsRefusedInWords) {
    EXPECT_EQ(readLanguageModelChoice("embeded").error().message,
              "\"embeded\" is no address of a server, such as http://127.0.0.1:8080, nor \"embedded\" or "
              "\"none\"");
    EXPECT_EQ(readLanguageModelChoice("http://localhost a\nb").error().message, "no model has such a name");
    for (const std::string text : {"", " ", "Embedded", "none ", " none", "embedded x", "--schema-in-prompt",
                                   "--schema-in-prompt none", "--other http://localhost",
                                   "http://localhost \xFF", "http://localhost \x1b[2J"})
        EXPECT_FALSE(readLanguageModelChoice(text)) << text;
    EXPECT_FALSE(readLanguageModelChoice("http://localhost " + std::string(2000, 'x')));
}

RC_GTEST_PROP(LanguageModelChoice, IsTheSameOnceWritten, (const std::string& model)) {
    for (const std::string& text : {model, "http://localhost " + model, "localhost" + model}) {
        const auto read = readLanguageModelChoice(text);
        if (!read)
            continue;
        const auto again = readLanguageModelChoice(toText(*read));
        RC_ASSERT(again.ok());
        RC_ASSERT(*again == *read);
    }
}

} // namespace
} // namespace quillo
