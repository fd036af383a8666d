#include "base/LoadedLibrary.h"

#include "base/ProgramFiles.h"

#include <dlfcn.h>

#include <filesystem>
#include <string>

namespace quillo {

Result<void*> loadFunction(std::string_view library, const char* function) {
    std::string problem;
    for (const std::filesystem::path& file : placesOf(library)) {
        // Loading it again gives the same.
        if (void* const loaded = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
            if (void* const found = dlsym(loaded, function))
                return found;
        }
        problem = dlerror();
    }
    return Error{problem};
}

} // namespace quillo
