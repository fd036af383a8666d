/// What can be asked of the program that holds the list: one type a command.
#pragma once

#include "base/Result.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace quillo::control {

// Tasks are named as the user names them, see TaskCommands. Texts are as typed.

struct Add {
    std::string text;
    friend bool operator==(const Add&, const Add&) = default;
};
struct SetDone {
    std::string task;
    bool done = true;
    friend bool operator==(const SetDone&, const SetDone&) = default;
};
struct Edit {
    std::string task;
    std::string text;
    friend bool operator==(const Edit&, const Edit&) = default;
};
struct Delete {
    std::string task;
    friend bool operator==(const Delete&, const Delete&) = default;
};
struct ClearCompleted {
    friend bool operator==(const ClearCompleted&, const ClearCompleted&) = default;
};
struct Remind {
    std::string task;
    std::string when; ///< empty: takes the date away
    friend bool operator==(const Remind&, const Remind&) = default;
};
struct Restore {
    std::size_t which = 1; ///< of the kept lists, the latest 1
    friend bool operator==(const Restore&, const Restore&) = default;
};
/// Has another language model asked from now on.
struct UseModel {
    std::string choice; ///< as readLanguageModelChoice() takes it
    friend bool operator==(const UseModel&, const UseModel&) = default;
};
/// Has the list kept in step through another place from now on, or through none.
struct UseSync {
    std::string place; ///< as readSyncPlace() takes it
    std::string keep;  ///< where both sides have tasks: "mine", "theirs", or empty for asking first
    std::optional<std::string> password = std::nullopt; ///< never to be shown, logged or written
    friend bool operator==(const UseSync&, const UseSync&) = default;
};
/// Brings the list in step with the other computers now.
struct SyncNow {
    std::optional<std::string> password = std::nullopt; ///< of the place, where it is wanted; as above
    friend bool operator==(const SyncNow&, const SyncNow&) = default;
};
/// Takes away what a computer that is gone for good has left for the others.
struct ForgetDevice {
    std::string device; ///< its identifier, or the beginning of that
    friend bool operator==(const ForgetDevice&, const ForgetDevice&) = default;
};
/// Brings up a window of the desktop program.
struct Show {
    enum class Window { popover, quickAdd, settings, statistics };
    Window window = Window::popover;
    friend bool operator==(const Show&, const Show&) = default;
};
struct Quit {
    friend bool operator==(const Quit&, const Quit&) = default;
};

using Command = std::variant<Add, SetDone, Edit, Delete, ClearCompleted, Remind, Restore, UseModel, UseSync,
                             SyncNow, ForgetDevice, Show, Quit>;

/// A command, and where and in which language it was typed: that decides what "tomorrow" means.
struct Request {
    Command command;
    std::string zone;   ///< as CivilCalendar takes it
    std::string locale; ///< as CivilCalendar takes it

    friend bool operator==(const Request&, const Request&) = default;
};

/// What asking for a window is called: "open", "quick-add", "settings", "statistics".
std::string_view nameOf(Show::Window window);
std::optional<Show::Window> windowNamed(std::string_view name);

/// The most bytes of a request's line, its end included. No command line is that long.
inline constexpr std::size_t longestRequest = std::size_t{16} << 20;

/// A JSON object on a line of its own, line end included: {"command":"add","text":"Buy
/// milk","tz":"Europe/Berlin", "locale":"de_DE"}. All texts must be UTF-8.
std::string encode(const Request& request);

/// Reads such a line, which may come from anybody: well-formed JSON and UTF-8, a known command, every member
/// it needs and each of its type. Unknown members are skipped.
Result<Request> decodeRequest(std::string_view line);

} // namespace quillo::control
