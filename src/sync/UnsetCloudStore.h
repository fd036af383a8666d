/// The cloud store of a user who has chosen no place to keep the list in step through.
#pragma once

#include "ports/CloudStore.h"

namespace quillo {

/// Holds nothing, keeps nothing, never reports a change.
class UnsetCloudStore : public CloudStore {
public:
    std::optional<Value> value(std::string_view) const override { return std::nullopt; }
    void apply(std::vector<Change>) override {}
    void synchronize() override {}
};

} // namespace quillo
