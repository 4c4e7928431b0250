#include "injected_fault.h"

#include <cerrno>

namespace devkit {

std::error_code injectedError(const char* call, FaultKinds kinds, const std::filesystem::path& path) {
    const auto fault = CallInterceptor::instance().enterOther(call, kinds);
    if (!fault) return {};
    switch (fault->kind) {
        case FaultKind::vanished: {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
            return {};
        }
        case FaultKind::denied:
            return {EACCES, std::system_category()};
        case FaultKind::shared:
            return {EBUSY, std::system_category()};
        case FaultKind::full:
            return {ENOSPC, std::system_category()};
        default:
            return {EAGAIN, std::system_category()};
    }
}

}  // namespace devkit
