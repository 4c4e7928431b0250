#include <logging/log_line.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace logging {

LogLine& LogLine::quoted(std::string_view name, std::string_view value) {
    return plain(name, '"' + std::string(value) + '"');
}

LogLine& LogLine::plain(std::string_view name, std::string_view value) {
    text_ += ' ';
    text_ += name;
    text_ += '=';
    text_ += value;
    return *this;
}

LogLine& LogLine::flag(std::string_view name, bool value) {
    return plain(name, value ? "true" : "false");
}

// Neither the C library's printing nor a stream's: the host may have set a locale that writes a comma.
LogLine& LogLine::decimal(std::string_view name, double value) {
    constexpr int significantDigits = 6;
    const int magnitude = value == 0 ? 0 : static_cast<int>(std::floor(std::log10(std::abs(value))));
    const int decimals = std::clamp(significantDigits - 1 - magnitude, 0, 30);
    std::array<char, 400> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals);
    std::string_view text(digits.data(), static_cast<std::size_t>(end.ptr - digits.data()));
    if (decimals > 0) {
        text = text.substr(0, text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) text.remove_suffix(1);
    }
    return plain(name, text);
}

std::string LogLine::text(std::string_view end) const {
    return text_ + std::string(end);
}

}  // namespace logging
