// Text to and from the host: UTF-8 on our side, the host's string class or its code page on its side.
#pragma once

#include <uf.h>
#include <NXOpen/NXString.hxx>

#include <memory>
#include <optional>
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

/// The same when it reads back as `text`; nothing when the host's code page lacks a letter of it.
inline std::optional<std::string> exactLocaleText(const std::string& text) {
    std::string narrow = localeText(text);
    if (utf8FromLocale(narrow.c_str()) != text) return std::nullopt;
    return narrow;
}

struct HostFree {
    void operator()(char* text) const { UF_free(text); }
};

/// Text that the C interface allocated for its caller.
using HostText = std::unique_ptr<char, HostFree>;

}  // namespace nx
