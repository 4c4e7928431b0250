// What all of the embedded service's web pages have in common. HTML in UTF-8; any thread.
#pragma once

#include <string>

namespace gopiv::html {

/// Plain text, for use between tags and in quoted attributes.
std::string escaped(const std::string& text);

/// A whole page. `title` is plain text and becomes its one main heading; `body`, HTML, stands below that.
std::string document(const std::string& title, const std::string& body);

}  // namespace gopiv::html
