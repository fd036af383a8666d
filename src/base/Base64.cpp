#include "base/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace quillo {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t invalid = 0xFF;

constexpr auto valueOf = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(invalid);
    for (std::size_t value = 0; value < alphabet.size(); ++value)
        values[static_cast<unsigned char>(alphabet[value])] = static_cast<std::uint8_t>(value);
    return values;
}();

std::uint32_t byteAt(std::string_view bytes, std::size_t place) {
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0;
}

} // namespace

std::string encodeBase64(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::uint32_t group =
            byteAt(bytes, at) << 16 | byteAt(bytes, at + 1) << 8 | byteAt(bytes, at + 2);
        text += alphabet[group >> 18];
        text += alphabet[group >> 12 & 63];
        text += at + 1 < bytes.size() ? alphabet[group >> 6 & 63] : '=';
        text += at + 2 < bytes.size() ? alphabet[group & 63] : '=';
    }
    return text;
}

std::optional<std::string> decodeBase64(std::string_view text) {
    if (text.size() % 4 != 0)
        return std::nullopt;
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    text.remove_suffix(padding);
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    std::uint32_t bits = 0;
    unsigned count = 0;
    for (const char c : text) {
        const std::uint8_t value = valueOf[static_cast<unsigned char>(c)];
        if (value == invalid)
            return std::nullopt;
        bits = (bits << 6 | value) & 0xFFFFFF;
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count & 0xFF);
        }
    }
    // Two ways of writing the same bytes are one too many.
    if ((bits & ((1U << count) - 1)) != 0)
        return std::nullopt;
    return bytes;
}

} // namespace quillo
