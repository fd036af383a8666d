#include "sync/WebDavServer.h"

#include "base/LoadedLibrary.h"
#include "base/Log.h"

#include <mutex>

namespace quillo {

Result<std::unique_ptr<WebDavServer>> loadWebDavServer(const std::string& url) {
    const Result<void*> maker = loadFunction("quillo-webdav.so", webDavServerMaker);
    if (maker)
        return std::unique_ptr<WebDavServer>(reinterpret_cast<MakeWebDavServer>(*maker)(url));
    static std::once_flag told;
    std::call_once(told, [&] { log("WebDAV servers cannot be asked: " + maker.error().message); });
    return Error{"the part of Quillo that speaks WebDAV is not installed"};
}

} // namespace quillo
