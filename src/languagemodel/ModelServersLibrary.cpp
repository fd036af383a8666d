#include "languagemodel/ModelServersLibrary.h"

#include "base/LoadedLibrary.h"
#include "base/Log.h"

namespace quillo {

ModelServers* loadModelServers() {
    const Result<void*> getter = loadFunction("quillo-modelservers.so", modelServersGetter);
    if (getter)
        return reinterpret_cast<GetModelServers>(*getter)();
    log("language-model servers cannot be asked: " + getter.error().message);
    return nullptr;
}

} // namespace quillo
