#include "languagemodel/ModelServersLibrary.h"

#include "base/Log.h"
#include "base/ProgramFiles.h"

#include <dlfcn.h>

#include <filesystem>
#include <string>

namespace quillo {

ModelServers* loadModelServers() {
    std::string problem;
    for (const std::filesystem::path& file : placesOf("quillo-modelservers.so")) {
        // It stays loaded until the end; loading it again gives the same.
        if (void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
            if (void* const getter = dlsym(library, modelServersGetter))
                return reinterpret_cast<GetModelServers>(getter)();
        }
        problem = dlerror();
    }
    log("language-model servers cannot be asked: " + problem);
    return nullptr;
}

} // namespace quillo
