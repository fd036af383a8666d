// `quillo-secrets`: see sync/Keyring.h.
#include "secrets/SecretServiceKeyring.h"

extern "C" __attribute__((visibility("default"))) quillo::Keyring* quilloGetKeyring();

quillo::Keyring* quilloGetKeyring() {
    // Never gone: a thread that nobody waits for may outlive what belongs to the program.
    static auto& keyring = *new quillo::SecretServiceKeyring;
    return &keyring;
}
