/// Which of two releases is the newer one.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillo {

/// Numbers with dots between them, such as "1.10": later ones are higher, and 1.0 is the same as 1.
class BuildNumber {
public:
    /// Absent for anything else; numbers have at most 18 digits, and there are at most eight.
    static std::optional<BuildNumber> parse(std::string_view text);

    friend auto operator<=>(const BuildNumber&, const BuildNumber&) = default;

private:
    std::vector<std::uint64_t> numbers_; ///< without zeros at the end
};

} // namespace quillo
