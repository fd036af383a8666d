// Any bytes as what a language-model server answers, and as a choice of the model: reading never crashes,
// texts that were read are UTF-8, and a choice that was read comes back equal when it is written and read
// again.
#include "languagemodel/LanguageModelChoice.h"
#include "modelservers/ChatMessages.h"
#include "modelservers/ModelNames.h"

#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillo;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto content = readAnswer(bytes)) {
        for (const auto& [name, value] : content->properties) {
            require(simdjson::validate_utf8(name));
            if (const auto* text = std::get_if<std::string>(&value))
                require(simdjson::validate_utf8(*text));
        }
    }
    if (const auto names = readModelNames(bytes)) {
        require(!names->empty());
        for (const std::string& name : *names)
            require(!name.empty() && simdjson::validate_utf8(name));
    }
    isOfLlamaServer(bytes);
    isOllamaVersion(bytes);
    if (const auto choice = readLanguageModelChoice(bytes)) {
        const auto again = readLanguageModelChoice(toText(*choice));
        require(again && *again == *choice);
    }
    return 0;
}
