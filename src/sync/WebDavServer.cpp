#include "sync/WebDavServer.h"

#include "base/Log.h"
#include "base/ProgramFiles.h"

#include <dlfcn.h>

#include <filesystem>
#include <mutex>

namespace quillo {

Result<std::unique_ptr<WebDavServer>> loadWebDavServer(const std::string& url) {
    std::string problem;
    for (const std::filesystem::path& file : placesOf("quillo-webdav.so")) {
        // It stays loaded until the end; loading it again gives the same.
        if (void* const library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
            if (void* const maker = dlsym(library, webDavServerMaker))
                return std::unique_ptr<WebDavServer>(reinterpret_cast<MakeWebDavServer>(maker)(url));
        }
        problem = dlerror();
    }
    static std::once_flag told;
    std::call_once(told, [&] { log("WebDAV servers cannot be asked: " + problem); });
    return Error{"the part of Quillo that speaks WebDAV is not installed"};
}

} // namespace quillo
