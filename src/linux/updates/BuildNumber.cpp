#include "linux/updates/BuildNumber.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace quillo {

namespace {

constexpr std::size_t mostDigits = 18; // fewer than overflow
constexpr std::size_t mostNumbers = 8;

} // namespace

std::optional<BuildNumber> BuildNumber::parse(std::string_view text) {
    BuildNumber build;
    while (true) {
        const std::size_t dot = std::min(text.find('.'), text.size());
        std::uint64_t number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + dot, number);
        if (error != std::errc() || end != text.data() + dot || dot > mostDigits ||
            build.numbers_.size() == mostNumbers)
            return std::nullopt;
        build.numbers_.push_back(number);
        if (dot == text.size())
            break;
        text.remove_prefix(dot + 1);
    }
    while (!build.numbers_.empty() && build.numbers_.back() == 0)
        build.numbers_.pop_back();
    return build;
}

} // namespace quillo
