#include "injected_fault.h"
#include "platform/calendar.h"

#include <cerrno>
#include <mutex>
#include <system_error>

namespace platform {
namespace {

CalendarTime calendarTime(std::chrono::system_clock::time_point moment,
                          std::tm* (*convert)(const std::time_t*, std::tm*)) {
    const auto fault = devkit::injectedError("platform::calendarTime", devkit::kinds::system);
    if (fault) throw std::system_error(fault, "calendar time");
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment).time_since_epoch().count();
    const auto time = static_cast<std::time_t>(seconds);
    CalendarTime result;
    if (!convert(&time, &result.fields)) throw std::system_error(errno, std::system_category(), "calendar time");
    result.offsetMinutes = static_cast<int>(result.fields.tm_gmtoff / 60);
    return result;
}

}  // namespace

CalendarTime localCalendarTime(std::chrono::system_clock::time_point moment) {
    // The C library has a lock of its own here, which ThreadSanitizer cannot see.
    static std::mutex zoneMutex;
    const std::lock_guard lock(zoneMutex);
    ::tzset();
    return calendarTime(moment, ::localtime_r);
}

CalendarTime utcCalendarTime(std::chrono::system_clock::time_point moment) {
    return calendarTime(moment, ::gmtime_r);
}

}  // namespace platform
