#include "linux/updates/PackageCommand.h"

#include "base/Product.h"

#include <cstdlib>
#include <fstream>
#include <system_error>

namespace quillo {

namespace {

using std::filesystem::path;

bool isBelow(const path& file, const path& folder) {
    const path relative = file.lexically_relative(folder);
    return !relative.empty() && *relative.begin() != "..";
}

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool lists(const path& list, const std::string& file) {
    std::ifstream lines(list);
    for (std::string line; std::getline(lines, line);) {
        if (line == file)
            return true;
    }
    return false;
}

/// dpkg keeps a list of the files of each package, <package>[:<architecture>].list; see dpkg-query(1).
std::optional<std::string> debianPackage(const path& program, const path& root) {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(root / "var/lib/dpkg/info", error)) {
        if (entry.path().extension() == ".list" && lists(entry.path(), program.string())) {
            const std::string name = entry.path().stem().string();
            return name.substr(0, name.find(':'));
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> packageCommand(const path& program, const path& root) {
    std::error_code error;
    if (std::filesystem::exists(root / ".flatpak-info", error))
        return "flatpak update " + std::string(product::desktopFile);
    if (const std::string snap = environment("SNAP"); !snap.empty() && isBelow(program, snap)) {
        const std::string name = environment("SNAP_INSTANCE_NAME");
        return "sudo snap refresh " + (name.empty() ? "quillo" : name);
    }
    const bool isSystems = isBelow(program, "/usr") && !isBelow(program, "/usr/local");
    if (!isSystems && !isBelow(program, "/opt"))
        return std::nullopt;
    if (const auto package = debianPackage(program, root))
        return "sudo apt update && sudo apt install --only-upgrade " + *package;
    return isSystems ? std::optional<std::string>("") : std::nullopt;
}

} // namespace quillo
