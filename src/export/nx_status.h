// Statuses of the host's C interface.
#pragma once

#include <string>

namespace pivra {

/// Logs "<operation> failed with NX status <status>." as a warning unless `status` is 0, and returns whether it is 0.
bool checkNxStatus(const std::string& operation, int status);

}  // namespace pivra
