#include "stats/DailyCounts.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

namespace quillo {

std::optional<DailyCounts> decodeDailyCounts(std::string_view bytes) {
    simdjson::dom::parser parser(largestStoredCounts);
    simdjson::dom::object object;
    if (parser.parse(bytes.data(), bytes.size()).get(object) != simdjson::SUCCESS)
        return std::nullopt;
    DailyCounts counts;
    for (const simdjson::dom::key_value_pair field : object) {
        std::int64_t count = 0;
        if (field.value.get(count) != simdjson::SUCCESS || count < 0)
            return std::nullopt;
        counts.insert_or_assign(std::string(field.key), count);
    }
    return counts;
}

std::optional<std::string> encodeDailyCounts(const DailyCounts& counts) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer writer(buffer);
    writer.StartObject();
    for (const auto& [key, count] : counts) {
        writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
        writer.Int64(count);
    }
    writer.EndObject();
    if (buffer.GetSize() > largestStoredCounts)
        return std::nullopt;
    return std::string(buffer.GetString(), buffer.GetSize());
}

} // namespace quillo
