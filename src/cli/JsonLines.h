/// `quillo parse --jsonl` and `quillo resolve --jsonl`: one JSON object a line in, one a line out, for
/// scripts and tests.
#pragma once

#include "base/Instant.h"
#include "base/Result.h"
#include "cli/BlockingParser.h"
#include "cli/Circumstances.h"
#include "cli/JsonMembers.h"

#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace quillo::cli {

/// What a line can ask.
struct JsonQuestion {
    std::string_view member; ///< the one that holds it; a line needs no other

    /// The answer's members as JSON text without the braces. `now` and `place` are what the line says, or
    /// else what holds for all lines.
    std::function<Result<std::string>(const JsonMember& question, Instant now, const Place& place)> answer;
};

/// What the parser, which must outlive the question, would understand of a text:
///
///     in   {"id":any,"text":"…","now":…,"tz":"Europe/Berlin","locale":"en_US"}
///     out  {"id":…,"hint":bool,"title":"…","due":seconds since 1970 or null,"interpretation":"…" or
///     null,"path":"…"}
JsonQuestion textQuestion(const BlockingParser& parser);

/// When a text that was classified so is due:
///
///     in   {"id":any,"classification":{"kind":"TOMORROW",…},"now":…,"tz":"Europe/Berlin","locale":"en_US"}
///     out  {"id":…,"due":seconds since 1970 or null}
JsonQuestion classificationQuestion();

/// Reads `input` until its end and answers every line on `output` at once. `circumstances` hold for lines
/// that do not name their own; their places are among `places`.
///
/// A line that cannot be read is answered by {"id":… or null,"error":"…"}. Malformed UTF-8 and lone
/// surrogates read as U+FFFD, which is said on standard error. Lines above 16 MiB are refused, unread.
/// Returns whether every line could be read; the error is about the input itself.
Result<bool> answerJsonLines(std::FILE* input, std::FILE* output, const Circumstances& circumstances,
                             Places& places, const JsonQuestion& question);

} // namespace quillo::cli
