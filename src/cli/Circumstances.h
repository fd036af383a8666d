/// When, where and in what language something is meant that does not say so itself.
#pragma once

#include "base/Instant.h"
#include "base/Result.h"
#include "cli/Arguments.h"
#include "entry/Place.h"

#include <functional>
#include <memory>
#include <string>

namespace quillo::cli {

struct Circumstances {
    std::function<Instant()> now; ///< fixed, or the present time whenever it is asked for
    std::shared_ptr<const Place> place;
};

/// By the options --now, --time-zone and --locale; without them it is now, in the zone of the system, in
/// `locale`. An option that cannot be understood is an error. The place is one of `places`.
Result<Circumstances> circumstancesOf(const Arguments& arguments, const std::string& locale, Places& places);

} // namespace quillo::cli
