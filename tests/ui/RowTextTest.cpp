#include "ui/row/RowText.h"

#include "support/TodoItemBuilder.h"
#include "ui/row/DateTimes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace quillo {
namespace {

using support::Task;
using unicode::CivilCalendar;

TEST(RowText, PutsATitleIntoOneLine) {
    const struct {
        const char* title;
        const char* line;
    } rows[] = {
        {"Buy milk", "Buy milk"},
        {"two\nlines", "two lines"},
        {"two\r\nlines", "two lines"},
        {"two\rlines\tand\vmore\f", "two lines and more "},
        {"a\xC2\x85"
         "b\xE2\x80\xA8"
         "c\xE2\x80\xA9"
         "d",
         "a b c d"},
        {"one  two", "one  two"},
        {"מחר 👩‍👩‍👧 אמא", "מחר 👩‍👩‍👧 אמא"},
        {"\xFF", "\xEF\xBF\xBD"},
        {"", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(RowText::title(row.title).toStdString(), row.line);
    EXPECT_EQ(RowText::title(std::string("a\0b", 3)).toStdString(), "a b");
    EXPECT_EQ(RowText::title(std::string(10'000, '\n')), QString(10'000, QChar(u' ')));
}

TEST(RowText, SpeaksAWholeRow) {
    const CivilCalendar calendar = CivilCalendar::create("Europe/Berlin", "en_US").value();
    const RowText text(calendar);
    const Instant due = calendar.instant({2026, 3, 5}, {15, 0});
    EXPECT_EQ(text.accessible(Task("Buy\nmilk")).toStdString(), "Buy milk");
    EXPECT_EQ(text.accessible(Task("Buy milk").done()).toStdString(), "Completed task: Buy milk");
    EXPECT_EQ(text.accessible(Task("Buy milk").due(due)).toStdString(),
              "Buy milk, Due Mar 5, 2026 at 3:00 PM");
    EXPECT_EQ(text.accessible(Task("Buy milk").due(due).done()).toStdString(),
              "Completed task: Buy milk, Due Mar 5, 2026 at 3:00 PM");
}

TEST(RowText, WritesInTheLanguageOfTheUser) {
    const CivilCalendar calendar = CivilCalendar::create("Europe/Berlin", "de_DE").value();
    const Instant due = calendar.instant({2026, 3, 5}, {15, 0});
    EXPECT_EQ(RowText(calendar).accessible(Task("Milch").due(due)).toStdString(),
              "Milch, Due 05.03.2026 um 15:00");
}

TEST(RowText, FollowsTheUserToAnotherZone) {
    CivilCalendar calendar = CivilCalendar::create("Europe/Berlin", "en_US").value();
    const RowText text(calendar);
    const Instant now = calendar.instant({2026, 3, 5}, {10, 0});
    const Instant due = calendar.instant({2026, 3, 5}, {23, 0});
    EXPECT_EQ(text.dueLabel(due, now, false).text, "Today, 11:00 PM");
    calendar = CivilCalendar::create("Asia/Tokyo", "en_US").value();
    EXPECT_EQ(text.dueLabel(due, now, false).text, "Tomorrow, 7:00 AM");
    EXPECT_EQ(text.accessible(Task("Fly").due(due)).toStdString(), "Fly, Due Mar 6, 2026 at 7:00 AM");
}

TEST(DateTimes, GoToQmlAndBack) {
    for (const double seconds : {0.0, 1741081260.25, -86400.0 * 365 * 1000, 253402300798.0}) {
        const Instant instant = Instant::fromUnixSeconds(seconds);
        EXPECT_EQ(toInstant(toDateTime(instant)), instant) << seconds;
    }
}

TEST(DateTimes, StayWithinTheCalendar) {
    constexpr double largest = std::numeric_limits<double>::max();
    for (const double seconds : {-largest, largest, std::nan(""), -1e13, 1e13}) {
        const QDateTime dateTime = toDateTime({seconds});
        EXPECT_TRUE(dateTime.isValid()) << seconds;
        EXPECT_TRUE(toInstant(dateTime)) << seconds;
    }
    EXPECT_FALSE(toInstant(QDateTime()));
    EXPECT_FALSE(toInstant(QDateTime::fromMSecsSinceEpoch(std::numeric_limits<qint64>::max())));
    EXPECT_FALSE(toInstant(QDateTime::fromMSecsSinceEpoch(253402300800000)));
}

} // namespace
} // namespace quillo
