#include "host_text.h"

#include <devkit/call_interceptor.h>

#include <cstring>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace devkit {

#if defined(_WIN32)

namespace {

std::wstring wide(const std::string& text, UINT codePage) {
    const int length = MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring result(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), result.data(), length);
    return result;
}

std::string narrow(const std::wstring& text, UINT codePage) {
    const int size = static_cast<int>(text.size());
    const int length = WideCharToMultiByte(codePage, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(codePage, 0, text.data(), size, result.data(), length, nullptr, nullptr);
    return result;
}

UINT fileSystemCodePage() {
    return AreFileApisANSI() ? CP_ACP : CP_OEMCP;
}

}  // namespace

std::string utf8FromNarrow(const std::string& text) {
    return narrow(wide(text, fileSystemCodePage()), CP_UTF8);
}

std::string narrowFromUtf8(const std::string& text) {
    return narrow(wide(text, CP_UTF8), fileSystemCodePage());
}

#else

std::string utf8FromNarrow(const std::string& text) {
    return text;
}

std::string narrowFromUtf8(const std::string& text) {
    return text;
}

#endif

NXOpen::NXString hostString(const std::string& utf8) {
    return NXOpen::NXString(CallInterceptor::instance().emptied() ? "" : utf8, NXOpen::NXString::UTF8);
}

bool copyNarrow(const std::string& text, char* buffer, std::size_t size) {
    const std::string narrow = CallInterceptor::instance().emptied() ? "" : narrowFromUtf8(text);
    if (narrow.size() >= size) return false;
    std::memcpy(buffer, narrow.c_str(), narrow.size() + 1);
    return true;
}

}  // namespace devkit

namespace NXOpen {

NXString::NXString(const char* text, NXStringMode mode) : NXString(std::string(text != nullptr ? text : ""), mode) {}

NXString::NXString(const std::string& text, NXStringMode mode)
    : locale_(mode == Locale ? text : devkit::narrowFromUtf8(text)),
      utf8_(mode == UTF8 ? text : devkit::utf8FromNarrow(text)) {}

}  // namespace NXOpen
