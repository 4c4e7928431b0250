// The plug-in's version, as the dialogs show it and the service is told it.
#pragma once

namespace service {

inline constexpr const char* version = PIVRA_VERSION;

}  // namespace service
