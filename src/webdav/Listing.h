/// What a WebDAV server says is in a folder.
#pragma once

#include "base/Result.h"
#include "sync/WebDavServer.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace quillo {

/// The most bytes that a listing may have.
inline constexpr std::size_t largestListing = std::size_t{4} << 20;

/// The question, the body of a PROPFIND request.
extern const std::string_view listingQuestion;

/// Reads the answer (multistatus, RFC 4918 14.16), which may be anything: its files, not its folders. A
/// document with a type declaration is refused, and so no entity is ever replaced; so is one that is nested
/// deeper than any sound one. An error says in a few words what is wrong.
Result<std::vector<ListedFile>> readListing(std::string_view xml);

} // namespace quillo
