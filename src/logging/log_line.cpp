#include <logging/log_line.h>

#include <locale>
#include <sstream>

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

LogLine& LogLine::decimal(std::string_view name, double value) {
    std::ostringstream stream;
    // The host may have set a locale that writes a comma.
    stream.imbue(std::locale::classic());
    stream << value;
    return plain(name, stream.str());
}

std::string LogLine::text(std::string_view end) const {
    return text_ + std::string(end);
}

}  // namespace logging
