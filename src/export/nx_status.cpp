#include "export/nx_status.h"

#include "logging/log.h"

#include <string>

namespace pivra {

bool checkNxStatus(const char* operation, int status) noexcept {
    if (status == 0) return true;
    logging::logBuilt(logging::LogLevel::warning, [&] {
        return std::string(operation) + " failed with NX status " + std::to_string(status) + ".";
    });
    return false;
}

}  // namespace pivra
