/// The classification of a text as scripts write it.
#pragma once

#include "base/Result.h"
#include "cli/JsonMembers.h"
#include "parser/GeneratedTodo.h"

namespace quillo::cli {

/// Reads {"kind":"TOMORROW","amount":0,"month":0,"day":0,"hasTime":true,"hour":9,"minute":0,"title":"…"}.
/// Only the kind is needed: numbers that are left out are 0, hasTime is false, the title empty. Other members
/// are ignored. Integers may be any of 64 bits.
Result<GeneratedTodo> readClassification(const JsonMember& classification);

} // namespace quillo::cli
