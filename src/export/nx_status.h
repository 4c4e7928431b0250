// Statuses of the host's C interface.
#pragma once

namespace pivra {

/// Logs "<operation> failed with NX status <status>." as a warning unless `status` is 0, and returns whether it is 0.
/// Also for destructors: never throws.
bool checkNxStatus(const char* operation, int status) noexcept;

}  // namespace pivra
