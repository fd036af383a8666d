#include "sync/DeviceFile.h"

#include "base/Base64.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace quillo {

namespace {

constexpr std::string_view ending = ".json";
constexpr std::int64_t format = 1;

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;
namespace dom = simdjson::dom;

void writeText(Writer& writer, const char* key, std::string text) {
    if (!simdjson::validate_utf8(text)) // The name of a machine may be anything.
        std::replace_if(
            text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; }, '?');
    writer.Key(key);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

bool readText(const dom::object& object, const char* key, std::string& text) {
    std::string_view found;
    if (object[key].get_string().get(found) != simdjson::SUCCESS)
        return false;
    text = found;
    return true;
}

} // namespace

std::optional<std::string> encodeDeviceFile(const DeviceFile& file) {
    if (file.list.items.size() > largestDeviceFile)
        return std::nullopt;
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writer.Key("format");
    writer.Int64(format);
    writeText(writer, "device", file.device.id.toString());
    writeText(writer, "name", file.device.name);
    writeText(writer, "app", file.device.app);
    writer.Key("items");
    const std::string items = '"' + encodeBase64(file.list.items.bytes()) + '"';
    writer.RawValue(items.data(), items.size(), rapidjson::kStringType);
    writer.Key("stamp");
    writer.Double(file.list.stamp);
    writer.EndObject();
    if (buffer.GetSize() >= largestDeviceFile)
        return std::nullopt;
    return std::string(buffer.GetString(), buffer.GetSize()) + '\n';
}

std::variant<DeviceFile, UnknownFormat, Error> decodeDeviceFile(std::string_view bytes) {
    if (bytes.size() > largestDeviceFile)
        return Error{"it is too large"};
    dom::parser parser;
    dom::object object;
    if (parser.parse(bytes.data(), bytes.size()).get_object().get(object) != simdjson::SUCCESS)
        return Error{"it is no JSON object, or only half of one"};
    dom::element found;
    if (object["format"].get(found) != simdjson::SUCCESS)
        return Error{"it does not say its format"};
    std::int64_t number = 0;
    if (found.get_int64().get(number) != simdjson::SUCCESS || number != format)
        return UnknownFormat{};

    DeviceFile file;
    std::string device;
    std::string_view items;
    if (!readText(object, "device", device) || !readText(object, "name", file.device.name) ||
        !readText(object, "app", file.device.app) ||
        object["items"].get_string().get(items) != simdjson::SUCCESS ||
        object["stamp"].get_double().get(file.list.stamp) != simdjson::SUCCESS)
        return Error{"something is missing in it, or of another type"};
    const std::optional<Uuid> id = Uuid::parse(device);
    if (!id)
        return Error{"it does not say whose it is"};
    if (!std::isfinite(file.list.stamp) || file.list.stamp < 0)
        return Error{"its stamp is none"};
    std::optional<std::string> list = decodeBase64(items);
    if (!list)
        return Error{"its list is no Base64"};
    file.device.id = *id;
    file.list.items = Data(*std::move(list));
    return file;
}

std::optional<DeviceFile> decodeDeviceFileOf(const Uuid& device, std::string_view bytes) {
    auto content = decodeDeviceFile(bytes);
    auto* const file = std::get_if<DeviceFile>(&content);
    return file != nullptr && file->device.id == device ? std::optional(std::move(*file)) : std::nullopt;
}

std::string deviceFileName(const Uuid& device) {
    return device.toString().append(ending);
}

std::optional<Uuid> deviceOfFileName(std::string_view name) {
    if (!name.ends_with(ending))
        return std::nullopt;
    const std::optional<Uuid> device = Uuid::parse(name.substr(0, name.size() - ending.size()));
    return device && deviceFileName(*device) == name ? device : std::nullopt;
}

} // namespace quillo
