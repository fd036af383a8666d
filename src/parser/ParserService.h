/// Turns one line of typed text into a title and a due date.
#pragma once

#include "base/CallbackScope.h"
#include "base/Instant.h"
#include "parser/ModelClassifier.h"
#include "parser/Parse.h"
#include "parser/TemporalExtractor.h"
#include "ports/LanguageModel.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace quillo {

/// A text about which a language model thinks. Belongs to the main thread. Dropping it ends that, without a
/// reply.
class PendingParse {
public:
    /// Replies at once, as if no model answered.
    void giveUp() { end(std::nullopt); }

private:
    friend class ParserService;
    using Reply = std::function<void(const Parse&)>;

    PendingParse(Parse miss, Reply reply) : miss_(std::move(miss)), reply_(std::move(reply)) {}
    void end(const std::optional<Parse>& answer);

    Parse miss_;
    Reply reply_; ///< none once it has been given
    std::unique_ptr<LanguageModelSession> session_;
    CallbackScope scope_;
};

/// Belongs to the main thread. Calls share nothing but compiled patterns.
class ParserService {
public:
    using Reply = PendingParse::Reply;

    /// All must outlive the service; the first two say where the user lives. Without a model there are the
    /// rules.
    ParserService(const unicode::CivilCalendar& calendar, const unicode::DateFormat& format,
                  LanguageModel* model = nullptr);

    /// Understands `text` (UTF-8; malformed sequences read as U+FFFD) as typed at `now`, by the rules alone.
    /// Never fails. Notes in `trace`, if given, which rules contributed.
    Parse parse(std::string_view text, Instant now, Trace* trace = nullptr) const;

    /// The same, but where the rules find no date asks the model. Replies once: before the call returns
    /// unless the model takes its time; then what is returned is to be kept until the reply, which may drop
    /// it. It replies no more once the service is gone. The trace is complete when the call returns.
    std::unique_ptr<PendingParse> parse(std::string_view text, Instant now, Reply reply,
                                        Trace* trace = nullptr) const;

    /// Has the model, if there is one, get ready for texts to come. Does not wait.
    void prewarm(Instant now) const;

private:
    TemporalExtractor extractor_;
    std::optional<ModelClassifier> classifier_;
};

} // namespace quillo
