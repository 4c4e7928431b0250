// The small texts of HTTP: percent encoding and form fields. All texts are UTF-8. Any thread.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace devkit {

/// Fields of a form or of an address's query, by name.
using Fields = std::map<std::string, std::string>;

/// `text` with everything but letters, digits and "-._~" written as %XX.
std::string percentEncode(std::string_view text);

/// The reverse; absent when a "%" is not followed by two hexadecimal digits. A "+" stays a "+".
std::optional<std::string> percentDecode(std::string_view text);

/// Joins fields as "name=value&name=value", encoded.
std::string encodeFields(const Fields& fields);

/// Reads such a text; a "+" is a blank, malformed fields are left out, and the last of several equal names wins.
Fields parseFields(std::string_view text);

/// The field's value, empty when there is none.
std::string fieldValue(const Fields& fields, const std::string& name);

}  // namespace devkit
