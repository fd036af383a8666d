#include "parser/ParserService.h"

#include "parser/TemporalHint.h"
#include "unicode/Text.h"

#include <string>
#include <utility>

namespace quillo {

/// The reply may drop this.
void PendingParse::end(const std::optional<Parse>& answer) {
    const Reply reply = std::exchange(reply_, nullptr);
    if (!reply)
        return;
    const Parse miss = std::move(miss_);
    session_.reset();
    reply(answer ? *answer : miss);
}

ParserService::ParserService(const unicode::CivilCalendar& calendar, const unicode::DateFormat& format,
                             LanguageModel* model)
    : extractor_(calendar, format) {
    if (model != nullptr)
        classifier_.emplace(*model, calendar, format);
}

Parse ParserService::parse(std::string_view text, Instant now, Trace* trace) const {
    const std::u16string utf16 = unicode::toUtf16(text);
    const std::u16string_view trimmed = unicode::trim(utf16);
    const std::u16string lowered = unicode::lower(trimmed);
    const Sightings sightings = look(lowered);
    if (trimmed.empty() || !hasTemporalHint(lowered, sightings))
        return {{unicode::toUtf8(trimmed), {}, {}}, false, ParsePath::None};

    TemporalExtractor::Result found = extractor_.extract(trimmed, sightings, now, trace);
    if (found.date) {
        // A text that is nothing but a date is its own title.
        std::string title =
            found.cleanedTitle.empty() ? unicode::toUtf8(trimmed) : std::move(found.cleanedTitle);
        return {{std::move(title), found.date, std::move(found.debug)}, true, ParsePath::Rules};
    }
    return {{unicode::toUtf8(trimmed), {}, "regex+ai miss"}, true, ParsePath::Miss};
}

std::unique_ptr<PendingParse> ParserService::parse(std::string_view text, Instant now, Reply reply,
                                                   Trace* trace) const {
    Parse parsed = parse(text, now, trace);
    if (parsed.path != ParsePath::Miss || !classifier_) {
        reply(parsed);
        return nullptr;
    }
    const std::string trimmed = parsed.task.title;
    std::unique_ptr<PendingParse> pending(new PendingParse(std::move(parsed), std::move(reply)));
    pending->session_ = classifier_->classify(
        trimmed, now, pending->scope_.guard([raw = pending.get()](const std::optional<Parse>& answer) {
            raw->end(answer);
        }));
    return pending->reply_ ? std::move(pending) : nullptr;
}

void ParserService::prewarm(Instant now) const {
    if (classifier_)
        classifier_->prewarm(now);
}

} // namespace quillo
