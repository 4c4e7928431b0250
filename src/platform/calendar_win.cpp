#include "platform/calendar.h"

#include "platform/windows_support.h"

#include <windows.h>

namespace platform {
namespace {

void require(BOOL succeeded) {
    if (!succeeded) throw std::system_error(lastError(), "calendar time");
}

SYSTEMTIME systemTime(std::chrono::system_clock::time_point moment) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment).time_since_epoch() + from1601To1970;
    const auto ticks = static_cast<std::uint64_t>(std::chrono::duration_cast<WindowsTicks>(seconds).count());
    const FILETIME fileTime{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    SYSTEMTIME result{};
    require(FileTimeToSystemTime(&fileTime, &result));
    return result;
}

std::chrono::sys_days daysOf(const SYSTEMTIME& time) {
    return std::chrono::year(time.wYear) / time.wMonth / time.wDay;
}

std::chrono::minutes minutesOf(const SYSTEMTIME& time) {
    return daysOf(time).time_since_epoch() + std::chrono::hours(time.wHour) + std::chrono::minutes(time.wMinute);
}

CalendarTime calendarTime(const SYSTEMTIME& time, const SYSTEMTIME& utc) {
    CalendarTime result;
    result.fields.tm_year = time.wYear - 1900;
    result.fields.tm_mon = time.wMonth - 1;
    result.fields.tm_mday = time.wDay;
    result.fields.tm_hour = time.wHour;
    result.fields.tm_min = time.wMinute;
    result.fields.tm_sec = time.wSecond;
    result.fields.tm_wday = time.wDayOfWeek;
    const std::chrono::sys_days newYear = std::chrono::year(time.wYear) / std::chrono::January / 1;
    result.fields.tm_yday = static_cast<int>((daysOf(time) - newYear).count());
    result.fields.tm_isdst = -1;
    result.offsetMinutes = static_cast<int>((minutesOf(time) - minutesOf(utc)).count());
    return result;
}

}  // namespace

CalendarTime localCalendarTime(std::chrono::system_clock::time_point moment) {
    const auto utc = systemTime(moment);
    SYSTEMTIME local{};
    require(SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local));
    return calendarTime(local, utc);
}

CalendarTime utcCalendarTime(std::chrono::system_clock::time_point moment) {
    const auto utc = systemTime(moment);
    return calendarTime(utc, utc);
}

}  // namespace platform
