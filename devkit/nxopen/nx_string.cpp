#include <NXOpen/NXString.hxx>

#include "host_text.h"

namespace NXOpen {

NXString::NXString(const char* text, NXStringMode mode) : NXString(std::string(text != nullptr ? text : ""), mode) {}

NXString::NXString(const std::string& text, NXStringMode mode)
    : mode_(mode),
      text_(text),
      locale_(mode == Locale ? text : devkit::narrowFromUtf8(text)),
      utf8_(mode == UTF8 ? text : devkit::utf8FromNarrow(text)) {}

}  // namespace NXOpen
