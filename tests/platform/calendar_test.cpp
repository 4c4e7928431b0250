#include "platform/calendar.h"
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>

namespace {

using platform::CalendarTime;
using std::chrono::hours;
using std::chrono::minutes;

using Moment = std::chrono::system_clock::time_point;

Moment utc(int year, unsigned month, unsigned day, int hour, int minute) {
    const std::chrono::sys_days date = std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
    return date + hours(hour) + minutes(minute);
}

/// The fields as "2026-01-31 08:15:00".
std::string textOf(const CalendarTime& time) {
    std::array<char, 100> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &time.fields);
    return text.data();
}

// The zone is a process's own from its start on, so the test run starts this case once more for each of them.
TEST(LocalTime, followsTheZoneOfTheProcess) {
    const struct {
        const char* zone;
        Moment moment;
        const char* text;
        int offsetMinutes;
    } cases[] = {
        {"Europe/Berlin", utc(2026, 3, 29, 0, 59), "2026-03-29 01:59:00", 60},
        {"Europe/Berlin", utc(2026, 3, 29, 1, 0), "2026-03-29 03:00:00", 120},
        {"Europe/Berlin", utc(2025, 12, 31, 23, 30), "2026-01-01 00:30:00", 60},
        {"Asia/Kolkata", utc(2026, 7, 15, 20, 0), "2026-07-16 01:30:00", 330},
        {"America/St_Johns", utc(2026, 1, 1, 2, 0), "2025-12-31 22:30:00", -210},
        {"America/St_Johns", utc(2026, 7, 1, 2, 0), "2026-06-30 23:30:00", -150},
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
