// Calendar time from the system's own clock and zone: the C library's `%z` and `localtime` cannot be relied on under
// Windows.
#pragma once

#include <chrono>
#include <ctime>

namespace platform {

/// A moment as calendar fields, and the minutes by which that calendar runs ahead of UTC.
struct CalendarTime {
    std::tm fields{};
    int offsetMinutes = 0;
};

/// `moment`, truncated to whole seconds, in the zone that the system is set to. Any thread.
CalendarTime localCalendarTime(std::chrono::system_clock::time_point moment);

/// `moment`, truncated to whole seconds, in UTC. Any thread.
CalendarTime utcCalendarTime(std::chrono::system_clock::time_point moment);

}  // namespace platform
