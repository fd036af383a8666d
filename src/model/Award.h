/// What can be earned by completing tasks, and its stored form.
#pragma once

#include <array>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace quillo {

/// Declared, and everywhere shown, in this order.
enum class Award { lightningFast, quickDraw, longGame, weekLongWinner, monthlyMaven, earlyBird, nightOwl };

inline constexpr std::array allAwards{Award::lightningFast,  Award::quickDraw,    Award::longGame,
                                      Award::weekLongWinner, Award::monthlyMaven, Award::earlyBird,
                                      Award::nightOwl};

/// The name under which an award is stored: that of its enumerator.
std::string_view rawValue(Award award);

/// The award stored under that name; absent if there is none.
std::optional<Award> awardNamed(std::string_view rawValue);

/// Reads a JSON array of raw values, in any order. The bytes are foreign: absent unless they are well-formed
/// JSON to the last one and every element is the raw value of an award. Any thread.
std::optional<std::set<Award>> decodeAwards(std::string_view bytes);

/// Writes what decodeAwards reads. Any thread.
std::string encodeAwards(const std::set<Award>& awards);

} // namespace quillo
