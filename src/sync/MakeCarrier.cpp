#include "sync/MakeCarrier.h"

#include "sync/FolderCarrier.h"
#include "sync/ThisDevice.h"

#include <variant>

namespace quillo {

std::unique_ptr<Carrier> makeCarrier(const SyncPlace& place, PlaceIs is, Preferences& preferences) {
    const auto* const folder = std::get_if<SyncedFolder>(&place);
    if (folder == nullptr)
        return nullptr;
    return std::make_unique<FolderCarrier>(folder->root, thisDevice(preferences),
                                           is == PlaceIs::New ? FolderCarrier::SetUp::Yes
                                                              : FolderCarrier::SetUp::No);
}

} // namespace quillo
