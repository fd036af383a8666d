// Any bytes as a book of reminders: reading them never crashes, and what was read comes back equal when it is
// written and read again, entry by entry and through a book that takes them from the preferences.
#include "base/Log.h"
#include "reminders/ReminderBook.h"
#include "support/InMemoryKeyValueStore.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillo;
    setLogSink([](std::string_view) {});
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto decoded = decodeReminderBook(bytes);
    const BookedReminders expected = decoded ? decoded->reminders : BookedReminders();
    for (const auto& [identifier, reminder] : expected) {
        const auto encoded = encodeBookedReminder(reminder);
        if (!encoded || identifier != reminder.request.identifier)
            std::abort();
        const auto again = decodeReminderBook("[" + *encoded + "]");
        if (!again || again->skipped > 0 || again->reminders != BookedReminders{{identifier, reminder}})
            std::abort();
    }

    support::InMemoryPreferences preferences;
    preferences.set(preference_keys::reminders, Data(std::string(bytes)));
    ReminderBook book(preferences);
    if (book.reminders() != expected || preferences.writes() != 1)
        std::abort();
    // A write keeps all the others.
    book.add({.identifier = "new", .content = {}, .at = {2025, 3, 5, 9, 0}, .dueDate = {}},
             [](const Outcome&) {});
    if (ReminderBook(preferences).reminders() != book.reminders() ||
        book.reminders().size() != expected.size() + (expected.contains("new") ? 0 : 1))
        std::abort();
    return 0;
}
