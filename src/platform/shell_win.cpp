#include <platform/shell.h>

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

#include <cstdint>

namespace platform {

namespace {

/// The state of COM that the shell asks for on the calling thread. Where the host has set another one, that one stays.
class ComApartment {
 public:
    ComApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~ComApartment() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

 private:
    HRESULT result_;
};

}  // namespace

int shellOpen(const std::string& address) {
    const ComApartment apartment;
    const HINSTANCE result = ShellExecuteA(nullptr, "open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return static_cast<int>(reinterpret_cast<std::intptr_t>(result));
}

}  // namespace platform
