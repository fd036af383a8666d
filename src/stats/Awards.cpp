#include "stats/Awards.h"

namespace quillo {

namespace {

constexpr double secondsPerMinute = 60;
constexpr double secondsPerWeek = 7 * 24 * 60 * secondsPerMinute;

bool deserves(const CompletionFacts& facts, Award award) {
    switch (award) {
    case Award::lightningFast:
        return facts.durationSeconds < secondsPerMinute;
    case Award::quickDraw:
        return facts.durationSeconds < 5 * secondsPerMinute;
    case Award::longGame:
        return facts.durationSeconds > secondsPerWeek;
    case Award::weekLongWinner:
        return facts.currentStreak >= 7;
    case Award::monthlyMaven:
        return facts.currentStreak >= 30;
    case Award::earlyBird:
        return facts.hour < 8;
    case Award::nightOwl:
        return facts.hour >= 22;
    }
    return false;
}

} // namespace

std::string_view titleOf(Award award) {
    switch (award) {
    case Award::lightningFast:
        return "Lightning Fast";
    case Award::quickDraw:
        return "Quick Draw";
    case Award::longGame:
        return "Long Game";
    case Award::weekLongWinner:
        return "Week-long Winner";
    case Award::monthlyMaven:
        return "Monthly Maven";
    case Award::earlyBird:
        return "Early Bird";
    case Award::nightOwl:
        return "Night Owl";
    }
    return {};
}

std::string_view subtitleOf(Award award) {
    switch (award) {
    case Award::lightningFast:
        return "Done in under a minute";
    case Award::quickDraw:
        return "Done in under five";
    case Award::longGame:
        return "Patience pays off";
    case Award::weekLongWinner:
        return "Seven days in a row";
    case Award::monthlyMaven:
        return "Thirty days strong";
    case Award::earlyBird:
        return "Crushed before 8 AM";
    case Award::nightOwl:
        return "Burned the midnight oil";
    }
    return {};
}

std::vector<Award> awardsFor(const CompletionFacts& facts) {
    std::vector<Award> awards;
    for (const Award award : allAwards) {
        if (deserves(facts, award))
            awards.push_back(award);
    }
    return awards;
}

} // namespace quillo
