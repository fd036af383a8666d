#include "model/HotKeyConfigJson.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <limits>

namespace quillo {

std::optional<HotKeyConfig> decodeHotKeyConfig(std::string_view bytes) {
    using simdjson::SUCCESS;
    constexpr std::size_t mostBytes = 4096; // Many times what it needs.
    constexpr std::uint64_t largest = std::numeric_limits<std::uint32_t>::max();
    simdjson::dom::parser parser(mostBytes);
    simdjson::dom::object object;
    std::uint64_t keyCode = 0;
    std::uint64_t modifiers = 0;
    if (parser.parse(bytes.data(), bytes.size()).get(object) != SUCCESS ||
        object["keyCode"].get(keyCode) != SUCCESS || object["modifiers"].get(modifiers) != SUCCESS ||
        keyCode > largest || modifiers > largest)
        return std::nullopt;
    return HotKeyConfig{static_cast<std::uint32_t>(keyCode), static_cast<std::uint32_t>(modifiers)};
}

std::string encodeHotKeyConfig(const HotKeyConfig& config) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer writer(buffer);
    writer.StartObject();
    writer.Key("keyCode");
    writer.Uint(config.keyCode);
    writer.Key("modifiers");
    writer.Uint(config.modifiers);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace quillo
