#include <logging/cpp_piv_logger.h>
#include <logging/log.h>

namespace logging {
namespace {

class CppPivLoggerAdapter final : public cpp_piv::ICppPivLogger {
 public:
    void debug(const std::string& text) override { LogDebug(text); }
    void info(const std::string& text) override { LogInfo(text); }
    void warning(const std::string& text) override { LogWarning(text); }
    void error(const std::string& text) override { LogError(text); }
};

}  // namespace

std::shared_ptr<cpp_piv::ICppPivLogger> makeCppPivLogger() {
    return std::make_shared<CppPivLoggerAdapter>();
}

}  // namespace logging
