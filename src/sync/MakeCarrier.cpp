#include "sync/MakeCarrier.h"

#include "sync/FolderCarrier.h"
#include "sync/ThisDevice.h"
#include "sync/WebDavCarrier.h"

#include <utility>
#include <variant>

namespace quillo {

std::unique_ptr<Carrier> makeCarrier(const SyncPlace& place, PlaceIs is, Preferences& preferences,
                                     std::shared_ptr<Passwords> passwords) {
    const bool isNew = is == PlaceIs::New;
    if (const auto* const folder = std::get_if<SyncedFolder>(&place))
        return std::make_unique<FolderCarrier>(folder->root, thisDevice(preferences),
                                               isNew ? FolderCarrier::SetUp::Yes : FolderCarrier::SetUp::No);
    if (const auto* const server = std::get_if<WebDavFolder>(&place))
        return std::make_unique<WebDavCarrier>(*server, thisDevice(preferences),
                                               isNew ? WebDavCarrier::SetUp::Yes : WebDavCarrier::SetUp::No,
                                               std::move(passwords));
    return nullptr;
}

} // namespace quillo
