/// Has a language model classify what the rules cannot date.
#pragma once

#include "base/CallbackScope.h"
#include "base/Instant.h"
#include "parser/Parse.h"
#include "ports/LanguageModel.h"
#include "unicode/CivilCalendar.h"
#include "unicode/DateFormat.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quillo {

/// Belongs to the main thread. Requests share nothing: each has a session of its own.
class ModelClassifier {
public:
    /// What the model made of the text; absent where it cannot be asked, failed, or answered something else
    /// than was asked.
    using Reply = std::function<void(const std::optional<Parse>&)>;

    /// Texts of more characters are no titles, and are kept from the model.
    static constexpr std::size_t longestText = 500;

    /// All three must outlive the classifier; the latter two say where the user lives.
    ModelClassifier(LanguageModel& model, const unicode::CivilCalendar& calendar,
                    const unicode::DateFormat& format)
        : model_(model), calendar_(calendar), format_(format) {}

    /// Asks about `text` (UTF-8, trimmed, not empty) as typed at `now`. Replies once, perhaps before the call
    /// returns. Dropping the session ends the request without a reply, and so does the end of the classifier.
    /// There is none where the model cannot be asked.
    std::unique_ptr<LanguageModelSession> classify(const std::string& text, Instant now, Reply reply) const;

    /// Has the model get ready, if it can be asked at all. Does not wait.
    void prewarm(Instant now) const;

private:
    LanguageModel& model_;
    const unicode::CivilCalendar& calendar_;
    const unicode::DateFormat& format_;
    CallbackScope scope_;
};

} // namespace quillo
