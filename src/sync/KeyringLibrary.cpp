#include "sync/KeyringLibrary.h"

#include "base/LoadedLibrary.h"
#include "base/Log.h"

namespace quillo {

Keyring* loadKeyring() {
    const Result<void*> getter = loadFunction("quillo-secrets.so", keyringGetter);
    if (getter)
        return reinterpret_cast<GetKeyring>(*getter)();
    log("passwords are kept in memory only: " + getter.error().message);
    return nullptr;
}

} // namespace quillo
