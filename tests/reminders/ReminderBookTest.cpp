#include "reminders/ReminderBook.h"

#include "reminders/Place.h"
#include "support/ArbitraryTodoItem.h"
#include "support/CapturedLog.h"
#include "support/InMemoryKeyValueStore.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::numberedId;

ReminderRequest requestNumbered(std::uint32_t number, double dueDate = 762854400.25) {
    return {.identifier = reminderIdentifier(numberedId(number)),
            .content = {"Quillo", "Call mom", true, InterruptionLevel::timeSensitive},
            .at = {2025, 3, 5, 9, 0},
            .dueDate = {dueDate}};
}

const std::string oneEntry =
    R"({"identifier":"quillo.00000000-0000-0000-0000-000000000001","title":"Quillo","body":"Call mom",)"
    R"("sound":true,"interruptionLevel":2,"year":2025,"month":3,"day":5,"hour":9,"minute":0,)"
    R"("dueDate":762854400.25})";

struct ReminderBookTest : testing::Test {
    support::CapturedLog log;
    support::InMemoryPreferences preferences;
    std::vector<std::string> changes;

    std::optional<std::string> stored() const {
        const auto data = preferences.data("Quillo.linux.reminders.v1");
        return data ? std::optional<std::string>(data->bytes()) : std::nullopt;
    }
    void store(std::string bytes) { preferences.set("Quillo.linux.reminders.v1", Data(std::move(bytes))); }
    BookedReminders reread() { return ReminderBook(preferences).reminders(); }

    /// Whether adding succeeded.
    static bool add(ReminderBook& book, const ReminderRequest& request) {
        std::optional<bool> added;
        book.add(request, [&added](const Outcome& outcome) { added = outcome.ok(); });
        EXPECT_TRUE(added) << "no answer yet";
        return added.value_or(false);
    }
    Connection listen(ReminderBook& book) {
        return book.observe([this](const std::string& identifier) { changes.push_back(identifier); });
    }
};

TEST_F(ReminderBookTest, NeedsNoPermission) {
    ReminderBook book(preferences);
    std::optional<ReminderAuthorization> status;
    book.authorizationStatus([&status](ReminderAuthorization answer) { status = answer; });
    EXPECT_EQ(status, ReminderAuthorization::authorized);
    bool granted = false;
    book.requestAuthorization(7,
                              [&granted](const Result<bool>& answer) { granted = answer.ok() && *answer; });
    EXPECT_TRUE(granted);
    EXPECT_EQ(preferences.writes(), 0);
}

TEST_F(ReminderBookTest, KeepsRequestsInThePreferences) {
    ReminderBook book(preferences);
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_TRUE(add(book, requestNumbered(1)));
    EXPECT_EQ(stored(), "[" + oneEntry + "]");
    EXPECT_TRUE(add(book, requestNumbered(2)));
    EXPECT_EQ(preferences.writes(), 2);
    EXPECT_EQ(reread(), book.reminders());
    EXPECT_EQ(reread().size(), 2U);
}

TEST_F(ReminderBookTest, AddingUnderTheSameIdentifierReplaces) {
    ReminderBook book(preferences);
    add(book, requestNumbered(1));
    ReminderRequest other = requestNumbered(1);
    other.at.hour = 17;
    const Connection connection = listen(book);
    EXPECT_TRUE(add(book, other));
    ASSERT_EQ(reread().size(), 1U);
    EXPECT_EQ(reread().begin()->second.request, other);
    EXPECT_EQ(changes, std::vector<std::string>{other.identifier});
    EXPECT_TRUE(add(book, other));
    EXPECT_EQ(preferences.writes(), 2) << "what is there already is not written again";
}

TEST_F(ReminderBookTest, RemovingWhatIsNotThereWritesNothing) {
    ReminderBook book(preferences);
    const Connection connection = listen(book);
    book.removePending("quillo.nobody");
    EXPECT_EQ(preferences.writes(), 0);
    EXPECT_TRUE(changes.empty());

    add(book, requestNumbered(1));
    book.removePending(reminderIdentifier(numberedId(1)));
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_EQ(changes.size(), 2U);
    book.removePending(reminderIdentifier(numberedId(1)));
    EXPECT_EQ(preferences.writes(), 2);
}

TEST_F(ReminderBookTest, NotesWhatWasShown) {
    ReminderBook book(preferences);
    for (const std::uint32_t number : {1U, 2U, 3U})
        add(book, requestNumbered(number));
    const Connection connection = listen(book);
    book.markDelivered({requestNumbered(1), requestNumbered(2)});
    EXPECT_EQ(preferences.writes(), 4);
    EXPECT_EQ(changes.size(), 2U);
    EXPECT_TRUE(book.find(reminderIdentifier(numberedId(1)))->delivered);
    EXPECT_TRUE(book.find(reminderIdentifier(numberedId(2)))->delivered);
    EXPECT_FALSE(book.find(reminderIdentifier(numberedId(3)))->delivered);
    EXPECT_EQ(reread(), book.reminders());
    book.markDelivered({requestNumbered(1), requestNumbered(2)});
    book.markDelivered({});
    EXPECT_EQ(preferences.writes(), 4);
}

TEST_F(ReminderBookTest, NotesNothingOfWhatWasNotShown) {
    ReminderBook book(preferences);
    add(book, requestNumbered(1));
    add(book, requestNumbered(2));
    ReminderRequest otherMinute = requestNumbered(1);
    otherMinute.at.minute = 1;
    book.markDelivered({otherMinute, requestNumbered(2, 1001), requestNumbered(9)});
    EXPECT_EQ(book.reminders().size(), 2U);
    EXPECT_EQ(preferences.writes(), 2);

    ReminderRequest otherWords = requestNumbered(1);
    otherWords.content.body = "Call dad";
    book.markDelivered({otherWords});
    EXPECT_TRUE(book.find(otherWords.identifier)->delivered) << "a new title makes no new reminder";
}

TEST_F(ReminderBookTest, AddingAgainAfterDeliveryIsANewReminder) {
    ReminderBook book(preferences);
    add(book, requestNumbered(1));
    book.markDelivered({requestNumbered(1)});
    add(book, requestNumbered(1));
    EXPECT_FALSE(reread().begin()->second.delivered);
}

TEST_F(ReminderBookTest, ReplacesAllInOneWrite) {
    ReminderBook book(preferences);
    add(book, requestNumbered(1));
    add(book, requestNumbered(2));
    BookedReminders wanted = book.reminders();
    const Connection connection = listen(book);
    book.replaceAll(wanted);
    EXPECT_EQ(preferences.writes(), 2);
    EXPECT_TRUE(changes.empty());

    wanted.erase(reminderIdentifier(numberedId(1)));
    wanted.begin()->second.request.at.hour = 7;
    wanted.emplace(reminderIdentifier(numberedId(3)), BookedReminder{requestNumbered(3)});
    book.replaceAll(wanted);
    EXPECT_EQ(preferences.writes(), 3);
    EXPECT_EQ(changes.size(), 3U);
    EXPECT_EQ(reread(), wanted);
}

TEST_F(ReminderBookTest, LeavesOutWhatIsNoReminder) {
    const auto with = [](const std::string& from, const std::string& to) {
        std::string entry = oneEntry;
        return entry.replace(entry.find(from), from.size(), to);
    };
    const std::vector<std::string> broken = {
        "7",
        "null",
        "[]",
        "{}",
        with("\"Call mom\"", "null"),
        with("\"body\"", "\"Body\""),
        with("\"sound\":true", "\"sound\":1"),
        with("\"interruptionLevel\":2", "\"interruptionLevel\":4"),
        with("\"interruptionLevel\":2", "\"interruptionLevel\":-1"),
        with("\"interruptionLevel\":2", "\"interruptionLevel\":2.5"),
        with("\"year\":2025", "\"year\":2025.0"),
        with("\"year\":2025", "\"year\":99999"),
        with("\"year\":2025", "\"year\":4294969321"),
        with("\"month\":3", "\"month\":0"),
        with("\"month\":3", "\"month\":14"),
        with("\"day\":5", "\"day\":33"),
        with("\"hour\":9", "\"hour\":24"),
        with("\"minute\":0", "\"minute\":-1"),
        with("762854400.25", "\"762854400.25\""),
        with("762854400.25", "1,\"delivered\":0"),
        with("quillo.00000000-0000-0000-0000-000000000001", ""),
        with("Call mom", std::string(longestReminderText + 1, 'x')),
    };
    for (const std::string& entry : broken) {
        const auto book = decodeReminderBook("[" + oneEntry + "," + entry + "]");
        ASSERT_TRUE(book) << entry;
        EXPECT_EQ(book->skipped, 1U) << entry;
        EXPECT_EQ(book->reminders.size(), 1U) << entry;
    }
    std::string all = "[" + oneEntry;
    for (const std::string& entry : broken)
        all += "," + entry;
    store(all + "]");
    EXPECT_EQ(reread().size(), 1U);
    EXPECT_EQ(log.lines(),
              std::vector<std::string>{"entries in the book of reminders that cannot be read: 22"});
}

TEST_F(ReminderBookTest, IgnoresKeysItDoesNotKnowAndTakesTheLastOfEqualEntries) {
    std::string later = oneEntry;
    later.replace(later.find("\"hour\":9"), 8, "\"hour\":10");
    later.insert(1, R"("color":{"red":[1,2]},)");
    store("[" + oneEntry + "," + later + "]");
    const BookedReminders reminders = reread();
    ASSERT_EQ(reminders.size(), 1U);
    EXPECT_EQ(reminders.begin()->second.request.at.hour, 10);
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(ReminderBookTest, StartsAnewWhereNothingCanBeRead) {
    for (const std::string& bytes :
         {std::string(), std::string("{}"), "[" + oneEntry, "[" + oneEntry + "]]", std::string("[\"\xFF\"]"),
          std::string(100'000, '['), std::string(largestReminderBook + 1, ' ')}) {
        store(bytes);
        EXPECT_TRUE(reread().empty());
    }
    EXPECT_EQ(log.lines(), std::vector<std::string>(7, "the book of reminders cannot be read"));
    ReminderBook book(preferences);
    EXPECT_TRUE(add(book, requestNumbered(1)));
    EXPECT_EQ(stored(), "[" + oneEntry + "]");
}

TEST_F(ReminderBookTest, AValueOfAnotherTypeIsNoBook) {
    preferences.set("Quillo.linux.reminders.v1", "[" + oneEntry + "]");
    EXPECT_TRUE(reread().empty());
}

TEST_F(ReminderBookTest, RefusesWhatCouldNotBeReadBack) {
    ReminderBook book(preferences);
    add(book, requestNumbered(1));
    std::vector<ReminderRequest> bad(5, requestNumbered(1));
    bad[0].content.body = "\xFF";
    bad[1].content.body = std::string(longestReminderText + 1, 'x');
    bad[2].dueDate = {std::numeric_limits<double>::infinity()};
    bad[3].at.month = 14;
    bad[4].identifier = "";
    for (const ReminderRequest& request : bad)
        EXPECT_FALSE(add(book, request)) << request;
    EXPECT_EQ(preferences.writes(), 1);
    EXPECT_EQ(book.reminders().begin()->second.request, requestNumbered(1));
}

TEST_F(ReminderBookTest, NeverGrowsBeyondWhatCanBeReadBack) {
    ReminderBook book(preferences);
    BookedReminders wanted;
    for (std::uint32_t number = 0; number < 300; ++number) {
        ReminderRequest request = requestNumbered(number);
        request.content.body = std::string(longestReminderText, 'x');
        wanted.emplace(request.identifier, BookedReminder{request});
    }
    book.replaceAll(wanted);
    EXPECT_LT(book.reminders().size(), 300U);
    EXPECT_FALSE(add(book, wanted.rbegin()->second.request));
    EXPECT_LE(stored()->size(), largestReminderBook);
    EXPECT_GT(stored()->size(), largestReminderBook - 70'000);
    EXPECT_EQ(reread(), book.reminders());
    book.removePending(wanted.begin()->first);
    EXPECT_TRUE(add(book, wanted.rbegin()->second.request));
    EXPECT_EQ(reread(), book.reminders());
}

RC_GTEST_FIXTURE_PROP(ReminderBookTest, EveryRequestComesBackAsItWas,
                      (std::vector<TodoItem> tasks, bool delivered)) {
    const unicode::CivilCalendar calendar = support::calendarIn("Asia/Kathmandu");
    BookedReminders wanted;
    for (TodoItem& task : tasks) {
        task.dueDate = Instant{*rc::gen::inRange(-60'000'000'000, 250'000'000'000) / 7.0};
        const auto request = reminderFor(task, calendar);
        RC_ASSERT(request);
        wanted.emplace(request->identifier, BookedReminder{*request, delivered});
    }
    ReminderBook(preferences).replaceAll(wanted);
    RC_ASSERT(reread() == wanted);
}

} // namespace
} // namespace quillo
