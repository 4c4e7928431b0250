#include "export/nx_status.h"

#include "logging/log.h"

namespace pivra {

bool checkNxStatus(const std::string& operation, int status) {
    if (status == 0) return true;
    logging::LogWarning(operation + " failed with NX status " + std::to_string(status) + ".");
    return false;
}

}  // namespace pivra
