// Builds log lines of one shape: a fixed head, then " name=value" for each field, then a full stop. Text values stand
// in double quotes, booleans as true and false.
#pragma once

#include <concepts>
#include <string>
#include <string_view>

namespace logging {

/// Example: LogLine("Preparing NX upload files:").quoted("part", label).flag("drawing", false).text()
/// gives: Preparing NX upload files: part="bolt" drawing=false.
class LogLine {
 public:
    explicit LogLine(std::string_view head) : text_(head) {}

    LogLine& quoted(std::string_view name, std::string_view value);
    LogLine& plain(std::string_view name, std::string_view value);
    LogLine& flag(std::string_view name, bool value);
    LogLine& number(std::string_view name, std::integral auto value) { return plain(name, std::to_string(value)); }
    /// A plain decimal number, however small: up to six significant digits, no trailing zeros, no exponent.
    LogLine& decimal(std::string_view name, double value);

    /// The line with `end` behind the last field.
    std::string text(std::string_view end = ".") const;

 private:
    std::string text_;
};

}  // namespace logging
