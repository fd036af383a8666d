/// Impressions as a network might have them, made by hand.
#pragma once

#include "classifier/Answer.h"
#include "classifier/EmbeddedWeights.h"
#include "classifier/Weights.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace quillo::classifier {

inline const Weights& programWeights() {
    static const Weights weights = *Weights::read(embeddedWeights());
    return weights;
}

/// A network that is sure of everything it says. `digits` says what the runs of digits are for, in their
/// order; all letters and marks only say when.
class Said {
public:
    explicit Said(std::string text, std::string_view kind)
        : text_(std::move(text)), tokens_(tokenize(text_)) {
        const Weights& weights = programWeights();
        const auto blank = [](std::size_t count) { return std::vector<float>(count, 0.0F); };
        impression_ = {{},
                       blank(weights.kinds.size()),
                       blank(weights.amounts.size()),
                       blank(monthCount),
                       blank(dayCount),
                       blank(hourCount),
                       blank(weights.minutes.size()),
                       blank(shiftCount)};
        for (std::size_t i = 0; i < tokens_.size(); ++i)
            impression_.roles.emplace_back()[static_cast<std::size_t>(Role::Strip)] = certain;
        const auto found = std::find(weights.kinds.begin(), weights.kinds.end(), kind);
        impression_.kind.at(static_cast<std::size_t>(found - weights.kinds.begin())) = certain;
        impression_.hour.back() = certain;
        impression_.shift.front() = certain;
    }

    Said& digits(std::initializer_list<Role> roles) {
        const auto* role = roles.begin();
        for (std::size_t i = 0; i < tokens_.size() && role != roles.end(); ++i) {
            if (isDigit(tokens_[i].word.front())) {
                impression_.roles[i] = {};
                impression_.roles[i][static_cast<std::size_t>(*role++)] = certain;
            }
        }
        return *this;
    }
    Said& keep(std::initializer_list<std::size_t> tokens) {
        for (const std::size_t i : tokens) {
            impression_.roles[i] = {};
            impression_.roles[i][0] = certain;
        }
        return *this;
    }
    Said& month(std::size_t value) { return choose(impression_.month, value); }
    Said& day(std::size_t value) { return choose(impression_.day, value); }
    Said& hour(std::size_t value) { return choose(impression_.hour, value); }
    Said& amount(int value) { return choose(impression_.amount, placeOf(programWeights().amounts, value)); }
    Said& shift(Shift value) { return choose(impression_.shift, static_cast<std::size_t>(value)); }
    Said& minute(int value) { return choose(impression_.minute, placeOf(programWeights().minutes, value)); }

    Answer on(int year, int month, int day, std::string locale = "en_US") const {
        ModelReference reference;
        reference.year = year;
        reference.month = month;
        reference.day = day;
        reference.locale = std::move(locale);
        return answerTo(programWeights(), text_, tokens_, impression_, reference);
    }

private:
    static constexpr float certain = 30;

    static std::size_t placeOf(const std::vector<int>& values, int value) {
        return static_cast<std::size_t>(std::find(values.begin(), values.end(), value) - values.begin());
    }
    Said& choose(std::vector<float>& head, std::size_t place) {
        std::fill(head.begin(), head.end(), 0.0F);
        head.at(place) = certain;
        return *this;
    }

    std::string text_;
    std::vector<Token> tokens_;
    Impression impression_;
};

} // namespace quillo::classifier
