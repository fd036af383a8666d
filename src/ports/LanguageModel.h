/// A language model that fills in a form about a text: a service of the machine, not of this program.
#pragma once

#include "base/Instant.h"
#include "base/Result.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quillo {

/// One property of an answer, as the model is asked for it. All of them are required.
struct PropertyGuide {
    enum class Type { Text, Integer, Boolean };

    std::string_view name;
    Type type = Type::Text;
    std::span<const std::string_view> choices = {}; ///< the only texts allowed; empty where any is
    std::string_view description;                   ///< for the model
};

/// The form that an answer fills in, in this order. Points to constants.
using AnswerSchema = std::span<const PropertyGuide>;

/// What a model answered. It is foreign: properties may be missing, doubled, unknown, of another type or out
/// of range.
struct GeneratedContent {
    using Value = std::variant<std::string, std::int64_t, bool>; ///< texts are UTF-8

    std::vector<std::pair<std::string, Value>> properties;
    std::optional<double> score; ///< how sure the model is, 0 ... 1, where it can tell
};

/// What a session knows besides its instructions, as data: models that read no prose go by it.
struct ModelReference {
    Instant now;        ///< to which words such as "tomorrow" relate
    std::string zone;   ///< of the tz database: "Europe/Berlin"
    std::string locale; ///< "en_US"

    // What the clock and a Gregorian calendar show there at that instant.
    int year = 1970;
    int month = 1;   ///< 1 ... 12
    int day = 1;     ///< 1 ... 31
    int weekday = 5; ///< Sunday = 1 ... Saturday = 7
    int hour = 0;    ///< 0 ... 23
    int minute = 0;  ///< 0 ... 59
};

/// One conversation, which holds one request at most. Belongs to the main thread. Whoever drops it while it
/// thinks gets no reply, and does not wait for that.
class LanguageModelSession {
public:
    using Reply = std::function<void(Result<GeneratedContent>)>;

    virtual ~LanguageModelSession() = default;

    /// Asks the model to fill in the form about the prompt. Replies once, on the main thread, perhaps before
    /// the call returns; the reply may drop the session. Nobody else limits how long that takes: where it may
    /// take for ever, the session sees to an error in time.
    virtual void respond(std::string_view prompt, AnswerSchema schema, Reply reply) = 0;

    /// Has the model get ready, so that the next answer comes sooner. Nobody hears how that went; it goes on
    /// when the session is dropped.
    virtual void prewarm() = 0;
};

/// Belongs to the main thread, which it never makes wait.
class LanguageModel {
public:
    virtual ~LanguageModel() = default;

    /// Whether it can be asked here at all. Costs nothing.
    virtual bool isAvailable() const = 0;

    /// A session that knows the instructions. It must not outlive the model.
    virtual std::unique_ptr<LanguageModelSession> startSession(std::string instructions,
                                                               ModelReference reference) = 0;
};

} // namespace quillo
