// Identifiers in the form of a UUID, as newer parts carry one. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace pivra {

/// True for 36 characters of hexadecimal digits with "-" at the positions 8, 13, 18 and 23, in either letter case.
bool isNxUuidFormat(std::string_view text);

/// A new version-4 UUID in lower case (RFC 4122, section 4.4).
std::string generateTraceableId();

}  // namespace pivra
