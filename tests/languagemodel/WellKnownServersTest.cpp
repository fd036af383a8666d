#include "languagemodel/WellKnownServers.h"

#include "languagemodel/ServerAddress.h"
#include "support/EnvironmentVariable.h"

#include <gtest/gtest.h>

#include <utility>

namespace quillo {
namespace {

std::string ollamaWhere(const char* variable) {
    const support::EnvironmentVariable host("OLLAMA_HOST", variable);
    return wellKnownServers().front();
}

TEST(WellKnownServers, AreOnThisMachine) {
    const support::EnvironmentVariable unset("OLLAMA_HOST", "");
    for (const std::string& address : wellKnownServers()) {
        EXPECT_TRUE(isOnThisMachine(address)) << address;
        EXPECT_EQ(*readServerAddress(address), address);
    }
}

TEST(WellKnownServers, FollowOllamasVariable) {
    for (const auto& [variable, address] : std::initializer_list<std::pair<const char*, const char*>>{
             {"", "http://127.0.0.1:11434"},
             {"127.0.0.1:5000", "http://127.0.0.1:5000"},
             {"127.0.0.1", "http://127.0.0.1:11434"},
             {":5000", "http://127.0.0.1:5000"},
             {"0.0.0.0", "http://127.0.0.1:11434"},
             {"0.0.0.0:5000", "http://127.0.0.1:5000"},
             {"[::1]", "http://[::1]:11434"},
             {"[::1]:5000", "http://[::1]:5000"},
             {"localhost", "http://localhost:11434"},
             {"box:5000", "http://box:5000"},
             {"http://box", "http://box"},
             {"https://box:5000", "https://box:5000"},
             {"no address", "http://127.0.0.1:11434"},
         })
        EXPECT_EQ(ollamaWhere(variable), address) << variable;
}

} // namespace
} // namespace quillo
