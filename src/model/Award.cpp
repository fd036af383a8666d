#include "model/Award.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

namespace quillo {

std::string_view rawValue(Award award) {
    switch (award) {
    case Award::lightningFast:
        return "lightningFast";
    case Award::quickDraw:
        return "quickDraw";
    case Award::longGame:
        return "longGame";
    case Award::weekLongWinner:
        return "weekLongWinner";
    case Award::monthlyMaven:
        return "monthlyMaven";
    case Award::earlyBird:
        return "earlyBird";
    case Award::nightOwl:
        return "nightOwl";
    }
    return {};
}

std::optional<Award> awardNamed(std::string_view name) {
    for (const Award award : allAwards) {
        if (rawValue(award) == name)
            return award;
    }
    return std::nullopt;
}

std::optional<std::set<Award>> decodeAwards(std::string_view bytes) {
    constexpr std::size_t mostBytes = 4096; // Several times what all awards together need.
    simdjson::dom::parser parser(mostBytes);
    simdjson::dom::array array;
    if (parser.parse(bytes.data(), bytes.size()).get(array) != simdjson::SUCCESS)
        return std::nullopt;
    std::set<Award> awards;
    for (const simdjson::dom::element element : array) {
        std::string_view name;
        if (element.get(name) != simdjson::SUCCESS)
            return std::nullopt;
        const std::optional<Award> award = awardNamed(name);
        if (!award)
            return std::nullopt;
        awards.insert(*award);
    }
    return awards;
}

std::string encodeAwards(const std::set<Award>& awards) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer writer(buffer);
    writer.StartArray();
    for (const Award award : awards) {
        const std::string_view name = rawValue(award);
        writer.String(name.data(), static_cast<rapidjson::SizeType>(name.size()));
    }
    writer.EndArray();
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace quillo
