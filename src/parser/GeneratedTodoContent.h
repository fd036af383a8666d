/// The form that a language model fills in to classify a text, and what it means.
#pragma once

#include "base/Result.h"
#include "parser/GeneratedTodo.h"
#include "ports/LanguageModel.h"

#include <cstddef>

namespace quillo {

/// The most characters of a title that is taken from a model; it leaves words out of a text that is no
/// longer.
inline constexpr std::size_t longestGeneratedTitle = 500;

/// A property for each member of GeneratedTodo, in their order. A constant.
AnswerSchema generatedTodoSchema();

/// Reads the answer to that form: each property once, of its type, and no others. An answer with more in it
/// is one to another question, and a wrong date is worse than none.
///
/// Numbers may be any. Malformed UTF-8 in the title becomes U+FFFD; a title that is too long is an error. The
/// error about a kind that there is not begins with "Unexpected rawValue" and quotes it.
Result<GeneratedTodo> readGeneratedTodo(const GeneratedContent& content);

/// The answer that means this classification, without a score.
GeneratedContent contentOf(const GeneratedTodo& todo);

} // namespace quillo
