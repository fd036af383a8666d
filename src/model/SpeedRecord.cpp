#include "model/SpeedRecord.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

namespace quillo {

std::optional<SpeedRecord> decodeSpeedRecord(std::string_view bytes) {
    using simdjson::SUCCESS;
    simdjson::dom::parser parser(largestStoredRecord);
    simdjson::dom::object object;
    std::string_view title;
    SpeedRecord record;
    if (parser.parse(bytes.data(), bytes.size()).get(object) != SUCCESS ||
        object["title"].get(title) != SUCCESS ||
        object["durationSeconds"].get(record.durationSeconds) != SUCCESS ||
        object["completedAt"].get(record.completedAt.secondsSince2001) != SUCCESS)
        return std::nullopt;
    record.title = title;
    return record;
}

std::optional<std::string> encodeSpeedRecord(const SpeedRecord& record) {
    using Buffer = rapidjson::StringBuffer;
    using Writer = rapidjson::Writer<Buffer, rapidjson::UTF8<>, rapidjson::UTF8<>, rapidjson::CrtAllocator,
                                     rapidjson::kWriteValidateEncodingFlag>;
    if (record.title.size() > largestStoredRecord)
        return std::nullopt;
    Buffer buffer;
    Writer writer(buffer);
    const bool written =
        writer.StartObject() && writer.Key("title") &&
        writer.String(record.title.data(), static_cast<rapidjson::SizeType>(record.title.size())) &&
        writer.Key("durationSeconds") && writer.Double(record.durationSeconds) && writer.Key("completedAt") &&
        writer.Double(record.completedAt.secondsSince2001) && writer.EndObject();
    if (!written || buffer.GetSize() > largestStoredRecord)
        return std::nullopt;
    return std::string(buffer.GetString(), buffer.GetSize());
}

} // namespace quillo
