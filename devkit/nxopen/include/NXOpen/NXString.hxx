// Text of the host: bytes and the encoding they came in.
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
    NXString(const NXString& other) = default;
    NXString& operator=(const NXString& other) = default;

    /// The text as it was passed in, in the code page, and in UTF-8. The pointers live as long as the unchanged object.
    const char* GetText() const { return text_.c_str(); }
    const char* GetLocaleText() const { return locale_.c_str(); }
    const char* GetUTF8Text() const { return utf8_.c_str(); }
    NXStringMode GetMode() const { return mode_; }

 private:
    NXStringMode mode_ = Locale;
    std::string text_;
    std::string locale_;
    std::string utf8_;
};

}  // namespace NXOpen
