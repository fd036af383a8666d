#include "sync/ThisDevice.h"

#include "base/Product.h"
#include "base/StableHash.h"

#include <unistd.h>

#include <array>
#include <fstream>
#include <optional>
#include <string_view>

namespace quillo {

namespace {

constexpr std::size_t uuidLength = 36;

std::string hostName() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

} // namespace

std::string machineId() {
    std::string name;
    for (const char* file : {"/etc/machine-id", "/var/lib/dbus/machine-id"}) {
        std::ifstream stream(file);
        if (stream >> name)
            break;
    }
    return name;
}

Device thisDevice(Preferences& preferences, const std::string& machine) {
    const std::string boundTo = " " + std::to_string(stableHash("Quillo " + machine));
    const std::string kept = preferences.text(preference_keys::syncDevice).value_or("");
    std::optional<Uuid> id;
    if (kept.size() > uuidLength && kept.substr(uuidLength) == boundTo)
        id = Uuid::parse(std::string_view(kept).substr(0, uuidLength));
    if (!id) {
        id = Uuid::random();
        preferences.set(preference_keys::syncDevice, id->toString() + boundTo);
    }
    const auto version = product::present(product::version);
    return {*id, hostName(), version ? "Quillo " + std::string(*version) : "Quillo"};
}

} // namespace quillo
