#include <gtest/gtest.h>
#include <platform/calendar.h>

#include <array>
#include <cstdlib>
#include <string>

namespace {

using platform::CalendarTime;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

using Moment = std::chrono::system_clock::time_point;

Moment utc(int year, unsigned month, unsigned day, int hour, int minute, int second = 0) {
    const std::chrono::sys_days date = std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
    return date + hours(hour) + minutes(minute) + seconds(second);
}

/// The fields as "2026-01-31 08:15:00, day 3 of the week and 31 of the year".
std::string textOf(const CalendarTime& time) {
    std::array<char, 100> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S, day %w of the week and %j of the year", &time.fields);
    return text.data();
}

TEST(UtcTime, splitsMomentsIntoFields) {
    const struct {
        Moment moment;
        const char* text;
    } cases[] = {
        {Moment(), "1970-01-01 00:00:00, day 4 of the week and 001 of the year"},
        {Moment(milliseconds(-500)), "1969-12-31 23:59:59, day 3 of the week and 365 of the year"},
        {utc(2024, 2, 29, 23, 59, 59) + milliseconds(999),
         "2024-02-29 23:59:59, day 4 of the week and 060 of the year"},
        {utc(2024, 12, 31, 12, 0), "2024-12-31 12:00:00, day 2 of the week and 366 of the year"},
    };
    for (const auto& [moment, text] : cases) {
        const auto time = platform::utcCalendarTime(moment);
        EXPECT_EQ(textOf(time), text);
        EXPECT_EQ(time.offsetMinutes, 0);
    }
}

// The zone is a process's own from its start on, so the test run starts this case once more for each of them.
TEST(LocalTime, followsTheZoneOfTheProcess) {
    const struct {
        const char* zone;
        Moment moment;
        const char* text;
        int offsetMinutes;
    } cases[] = {
        {"Europe/Berlin", utc(2026, 1, 15, 12, 0), "2026-01-15 13:00:00, day 4 of the week and 015 of the year", 60},
        {"Europe/Berlin", utc(2026, 7, 15, 12, 0), "2026-07-15 14:00:00, day 3 of the week and 196 of the year", 120},
        {"Europe/Berlin", utc(2026, 3, 29, 0, 59), "2026-03-29 01:59:00, day 0 of the week and 088 of the year", 60},
        {"Europe/Berlin", utc(2026, 3, 29, 1, 0), "2026-03-29 03:00:00, day 0 of the week and 088 of the year", 120},
        {"Europe/Berlin", utc(2025, 12, 31, 23, 30), "2026-01-01 00:30:00, day 4 of the week and 001 of the year", 60},
        {"Asia/Kolkata", utc(2026, 7, 15, 20, 0), "2026-07-16 01:30:00, day 4 of the week and 197 of the year", 330},
        {"America/St_Johns", utc(2026, 1, 1, 2, 0), "2025-12-31 22:30:00, day 3 of the week and 365 of the year", -210},
        {"America/St_Johns", utc(2026, 7, 1, 2, 0), "2026-06-30 23:30:00, day 2 of the week and 181 of the year", -150},
    };
    const char* zone = std::getenv("TZ");
    for (const auto& row : cases) {
        const auto time = platform::localCalendarTime(row.moment);
        EXPECT_EQ(textOf(time), textOf(platform::utcCalendarTime(row.moment + minutes(time.offsetMinutes))));
        if (!zone || std::string(zone) != row.zone) continue;
        EXPECT_EQ(textOf(time), row.text);
        EXPECT_EQ(time.offsetMinutes, row.offsetMinutes);
    }
}

}  // namespace
