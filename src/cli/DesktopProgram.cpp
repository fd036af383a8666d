#include "cli/DesktopProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace quillo::cli {

namespace {

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// What posix_spawnp takes: a path, or a name to be looked for.
std::string desktopProgram() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path beside = self.parent_path() / "quillo-desktop";
    return !error && ::access(beside.c_str(), X_OK) == 0 ? beside.string() : beside.filename().string();
}

/// A process in a session of its own, which nothing that happens to our terminal reaches.
class DetachedSpawn {
public:
    DetachedSpawn() {
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID);
        posix_spawn_file_actions_init(&actions_);
        for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            posix_spawn_file_actions_addopen(&actions_, descriptor, "/dev/null", O_RDWR, 0);
    }
    ~DetachedSpawn() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    DetachedSpawn(const DetachedSpawn&) = delete;
    DetachedSpawn& operator=(const DetachedSpawn&) = delete;

    /// 0 or an error number.
    int run(const std::string& program, char* const* arguments) const {
        pid_t process = 0;
        return posix_spawnp(&process, program.c_str(), &actions_, &attributes_, arguments, environ);
    }

private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t actions_{};
};

} // namespace

Outcome startDesktopProgram(control::Show::Window window) {
    if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY"))
        return Error{
            "there is no display; quillo add, list, done, edit, remind, delete and export work without one"};
    std::string program = desktopProgram();
    std::string option = "--show";
    std::string name(nameOf(window));
    const std::array<char*, 4> arguments{program.data(), option.data(), name.data(), nullptr};
    const int error = DetachedSpawn().run(program, arguments.data());
    if (error == ENOENT)
        return Error{"quillo-desktop is not installed"};
    if (error != 0)
        return Error{"quillo-desktop cannot be started: " + std::generic_category().message(error)};
    return success();
}

} // namespace quillo::cli
