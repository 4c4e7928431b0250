// Text to and from the host: UTF-8 on our side, the host's string class or its code page on its side.
#pragma once

#include <NXOpen/NXString.hxx>

#include <string>

namespace nx {

/// `text` in UTF-8, empty for a string without text.
inline std::string utf8(const NXOpen::NXString& text) {
    const char* value = text.GetUTF8Text();
    return value != nullptr ? value : "";
}

/// The host's string of the UTF-8 `text`.
inline NXOpen::NXString toHost(const std::string& text) {
    return NXOpen::NXString(text, NXOpen::NXString::UTF8);
}

/// Narrow text of the C interface, which is in the host's code page, in UTF-8; empty for null.
inline std::string utf8FromLocale(const char* text) {
    return text != nullptr ? utf8(NXOpen::NXString(text, NXOpen::NXString::Locale)) : std::string();
}

/// The UTF-8 `text` as the C interface takes it. Its functions ask for buffers that they may write to: data() is one.
inline std::string localeText(const std::string& text) {
    const NXOpen::NXString converted = toHost(text);
    const char* value = converted.GetLocaleText();
    return value != nullptr ? value : "";
}

}  // namespace nx
