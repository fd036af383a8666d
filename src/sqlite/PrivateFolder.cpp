#include "sqlite/PrivateFolder.h"

#include <sys/stat.h>

#include <cerrno>
#include <system_error>

namespace quillo {

Outcome makePrivateFolder(const std::filesystem::path& folder) {
    struct stat status {};
    if (stat(folder.c_str(), &status) == 0) {
        if (S_ISDIR(status.st_mode))
            return success();
        return Error{folder.string() + " is not a folder"};
    }
    if (errno == ENOENT && folder.has_relative_path()) {
        const std::filesystem::path parent = folder.parent_path();
        if (!parent.empty() && parent != folder) {
            if (Outcome made = makePrivateFolder(parent); !made)
                return made;
        }
        // Another process may have been quicker.
        if (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST)
            return success();
    }
    return Error{"cannot make the folder " + folder.string() + ": " + systemErrorText(errno)};
}

std::string systemErrorText(int errorNumber) {
    return std::generic_category().message(errorNumber);
}

} // namespace quillo
