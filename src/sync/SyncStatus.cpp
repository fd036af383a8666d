#include "sync/SyncStatus.h"

#include "base/Log.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <system_error>
#include <utility>

namespace quillo {

namespace {

namespace dom = simdjson::dom;

constexpr const char* fileName = "sync-status.json";
constexpr double longestSilence = 365.0 * 24 * 60 * 60; // seconds
constexpr std::size_t largestFile = std::size_t{1} << 20;

void addText(rapidjson::Writer<rapidjson::StringBuffer>& writer, const char* key, const std::string& text) {
    writer.Key(key);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

std::optional<FoundDevice> readDevice(dom::element element) {
    std::string_view id;
    std::string_view name;
    std::string_view app;
    FoundDevice found;
    if (element["device"].get_string().get(id) != simdjson::SUCCESS ||
        element["name"].get_string().get(name) != simdjson::SUCCESS ||
        element["app"].get_string().get(app) != simdjson::SUCCESS ||
        element["stamp"].get_double().get(found.stamp) != simdjson::SUCCESS || !std::isfinite(found.stamp))
        return std::nullopt;
    const std::optional<Uuid> device = Uuid::parse(id);
    if (!device)
        return std::nullopt;
    found.device = {*device, std::string(name), std::string(app)};
    return found;
}

} // namespace

bool isSilent(const FoundDevice& device, Instant now) {
    return now - Instant::fromUnixSeconds(device.stamp) > longestSilence;
}

std::string encodeSyncStatus(const SyncStatus& status) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    writer.StartObject();
    if (status.lastInStep) {
        writer.Key("lastInStep");
        writer.Double(status.lastInStep->secondsSince2001);
    }
    if (status.problem)
        addText(writer, "problem", *status.problem);
    writer.Key("devices");
    writer.StartArray();
    for (const auto& [device, stamp] : status.devices) {
        writer.StartObject();
        addText(writer, "device", device.id.toString());
        addText(writer, "name", device.name);
        addText(writer, "app", device.app);
        writer.Key("stamp");
        writer.Double(stamp);
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + '\n';
}

std::optional<SyncStatus> decodeSyncStatus(std::string_view bytes) {
    dom::parser parser;
    dom::object object;
    if (parser.parse(bytes.data(), bytes.size()).get_object().get(object) != simdjson::SUCCESS)
        return std::nullopt;
    SyncStatus status;
    if (double time = 0;
        object["lastInStep"].get_double().get(time) == simdjson::SUCCESS && std::isfinite(time))
        status.lastInStep = Instant{time};
    if (std::string_view problem; object["problem"].get_string().get(problem) == simdjson::SUCCESS)
        status.problem = std::string(problem);
    dom::array devices;
    if (object["devices"].get_array().get(devices) != simdjson::SUCCESS)
        return std::nullopt;
    for (const dom::element element : devices) {
        std::optional<FoundDevice> device = readDevice(element);
        if (!device)
            return std::nullopt;
        status.devices.push_back(*std::move(device));
    }
    return status;
}

void writeSyncStatus(const std::filesystem::path& folder, const SyncStatus& status) {
    const std::filesystem::path file = folder / fileName;
    const std::filesystem::path temporary = folder / ".unfinished-sync-status";
    // Not worth waiting for the disk: what a crash takes is found anew at the next exchange.
    bool written = static_cast<bool>(std::ofstream(temporary, std::ios::binary) << encodeSyncStatus(status));
    written = written && std::rename(temporary.c_str(), file.c_str()) == 0;
    if (!written)
        log("cannot write " + file.string() + ": " + std::generic_category().message(errno));
}

SyncStatus readSyncStatus(const std::filesystem::path& folder) {
    std::ifstream input(folder / fileName, std::ios::binary);
    std::string bytes(largestFile, '\0');
    input.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(input.gcount()));
    return decodeSyncStatus(bytes).value_or(SyncStatus{});
}

} // namespace quillo
