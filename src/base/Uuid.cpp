#include "base/Uuid.h"

#include <sys/random.h>

#include <cerrno>
#include <cstdlib>

namespace quillo {

namespace {

constexpr std::string_view hexDigits = "0123456789ABCDEF";

/// What each character is worth as a hexadecimal digit in either case; 255 for those that are none.
constexpr auto hexValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(255);
    for (std::uint8_t value = 0; value < 16; ++value) {
        const char upper = hexDigits[value];
        values[static_cast<std::uint8_t>(upper)] = value;
        values[static_cast<std::uint8_t>(upper >= 'A' ? upper - 'A' + 'a' : upper)] = value;
    }
    return values;
}();

std::uint8_t hexValue(char c) {
    return hexValues[static_cast<std::uint8_t>(c)];
}

/// Where the canonical form (8-4-4-4-12 digits) has its hyphens, and each byte its two digits.
constexpr std::array<std::uint8_t, 4> hyphensAt = {8, 13, 18, 23};
constexpr std::array<std::uint8_t, 16> digitsAt = {0, 2, 4, 6, 9, 11, 14, 16, 19, 21, 24, 26, 28, 30, 32, 34};

} // namespace

Uuid Uuid::random() {
    Uuid uuid;
    std::size_t filled = 0;
    while (filled < uuid.bytes.size()) {
        const ssize_t count = getrandom(uuid.bytes.data() + filled, uuid.bytes.size() - filled, 0);
        if (count > 0)
            filled += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            std::abort(); // No kernel we run on lacks it, and an identifier that is not random would be
                          // worse.
    }
    uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0F) | 0x40);
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3F) | 0x80);
    return uuid;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36)
        return std::nullopt;
    for (const std::size_t at : hyphensAt) {
        if (text[at] != '-')
            return std::nullopt;
    }
    Uuid uuid;
    int all = 0;
    for (std::size_t byte = 0; byte < uuid.bytes.size(); ++byte) {
        const int high = hexValue(text[digitsAt[byte]]);
        const int low = hexValue(text[digitsAt[byte] + 1U]);
        all |= high | low;
        uuid.bytes[byte] = static_cast<std::uint8_t>(high << 4 | low);
    }
    if (all > 15) // One of them was no digit.
        return std::nullopt;
    return uuid;
}

std::array<char, 36> Uuid::characters() const {
    std::array<char, 36> text{};
    for (const std::size_t at : hyphensAt)
        text[at] = '-';
    for (std::size_t byte = 0; byte < bytes.size(); ++byte) {
        text[digitsAt[byte]] = hexDigits[bytes[byte] >> 4];
        text[digitsAt[byte] + 1U] = hexDigits[bytes[byte] & 0x0F];
    }
    return text;
}

std::string Uuid::toString() const {
    const auto text = characters();
    return {text.data(), text.size()};
}

} // namespace quillo
