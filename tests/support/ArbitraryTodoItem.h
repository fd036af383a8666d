/// Tasks as RapidCheck makes them up: every field takes every value that the stored form can carry.
#pragma once

#include "model/TodoItem.h"

#include <rapidcheck.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

namespace quillo {

inline std::ostream& operator<<(std::ostream& out, const TodoItem& item) {
    return out << item.id.toString() << (item.isDone ? " done " : " open ") << '"' << item.title << '"';
}

} // namespace quillo

namespace rc {

template <>
struct Arbitrary<quillo::Uuid> {
    static Gen<quillo::Uuid> arbitrary() {
        return gen::map(gen::arbitrary<std::array<std::uint8_t, 16>>(),
                        [](const std::array<std::uint8_t, 16>& bytes) { return quillo::Uuid{bytes}; });
    }
};

/// Every finite double is as likely as any other, so most are nothing a clock ever showed.
template <>
struct Arbitrary<quillo::Instant> {
    static Gen<quillo::Instant> arbitrary() {
        const auto anyBits = gen::map(gen::resize(kNominalSize, gen::arbitrary<std::uint64_t>()),
                                      [](std::uint64_t bits) { return std::bit_cast<double>(bits); });
        return gen::map(gen::suchThat(anyBits, [](double value) { return std::isfinite(value); }),
                        [](double value) { return quillo::Instant{value}; });
    }
};

template <class T>
struct Arbitrary<std::optional<T>> {
    static Gen<std::optional<T>> arbitrary() {
        return gen::map(gen::maybe(gen::arbitrary<T>()), [](Maybe<T> value) {
            return value ? std::optional<T>(*std::move(value)) : std::nullopt;
        });
    }
};

template <>
struct Arbitrary<quillo::TodoItem> {
    static Gen<quillo::TodoItem> arbitrary() {
        using quillo::TodoItem;
        return gen::build<TodoItem>(gen::set(&TodoItem::id), gen::set(&TodoItem::title, unicodeText()),
                                    gen::set(&TodoItem::isDone), gen::set(&TodoItem::dueDate),
                                    gen::set(&TodoItem::createdAt), gen::set(&TodoItem::completedAt),
                                    gen::set(&TodoItem::notificationID, optionalText()));
    }

    /// UTF-8 of any code points: control characters, quotes, accents, emoji, unassigned ones.
    static Gen<std::string> unicodeText() {
        const auto codePoint =
            gen::weightedOneOf<char32_t>({{2, gen::cast<char32_t>(gen::inRange(0x00, 0x80))},
                                          {1, gen::cast<char32_t>(gen::inRange(0x80, 0xD800))},
                                          {1, gen::cast<char32_t>(gen::inRange(0xE000, 0x110000))}});
        return gen::map(gen::container<std::u32string>(codePoint), [](const std::u32string& codePoints) {
            std::string utf8;
            for (const char32_t c : codePoints) {
                const auto tail = [c](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
                if (c < 0x80)
                    utf8 += static_cast<char>(c);
                else if (c < 0x800)
                    utf8 += {static_cast<char>(0xC0 | (c >> 6)), tail(0)};
                else if (c < 0x10000)
                    utf8 += {static_cast<char>(0xE0 | (c >> 12)), tail(6), tail(0)};
                else
                    utf8 += {static_cast<char>(0xF0 | (c >> 18)), tail(12), tail(6), tail(0)};
            }
            return utf8;
        });
    }

    static Gen<std::optional<std::string>> optionalText() {
        return gen::map(gen::maybe(unicodeText()), [](Maybe<std::string> text) {
            return text ? std::optional(*std::move(text)) : std::nullopt;
        });
    }
};

} // namespace rc
