/// `quillo parse --jsonl`: one JSON object a line in, one a line out, for scripts and tests.
#pragma once

#include "base/Instant.h"
#include "base/Result.h"

#include <cstdio>
#include <functional>
#include <string>

namespace quillo::cli {

/// What holds for lines that do not say it themselves.
struct JsonLinesDefaults {
    std::function<Instant()> now;
    std::string zone;
    std::string locale;
};

/// Understands every line of `input` until its end and answers each on `output` at once:
///
///     in   {"id":any,"text":"…","now":…,"tz":"Europe/Berlin","locale":"en_US"}
///     out  {"id":…,"hint":bool,"title":"…","due":seconds since 1970 or null,"interpretation":"…" or
///     null,"path":"…"}
///
/// A line that cannot be read is answered by {"id":… or null,"error":"…"}. Malformed UTF-8 and lone
/// surrogates read as U+FFFD, which is said on standard error. Lines above 16 MiB are refused, unread.
/// Returns whether every line could be read; the error is about the input itself.
Result<bool> parseJsonLines(std::FILE* input, std::FILE* output, const JsonLinesDefaults& defaults);

} // namespace quillo::cli
