// Text of the host, which knows the encoding that it came in.
#pragma once

#include <nxopen_export.h>

#include <string>

namespace NXOpen {

class NXOPEN_EXPORT NXString {
 public:
    enum NXStringMode { UTF8, Locale };

    NXString() = default;
    NXString(const char* text, NXStringMode mode = Locale);
    NXString(const std::string& text, NXStringMode mode = Locale);

    /// The text in the code page, and in UTF-8. The pointers live as long as the unchanged object.
    const char* GetLocaleText() const { return locale_.c_str(); }
    const char* GetUTF8Text() const { return utf8_.c_str(); }

 private:
    std::string locale_;
    std::string utf8_;
};

}  // namespace NXOpen
