// The two forms of JSON here.
#pragma once

#include <nlohmann/json.hpp>

namespace nxhost {

using Json = nlohmann::json;           ///< what a replay says
using Event = nlohmann::ordered_json;  ///< what stands in a transcript: its members keep their order

}  // namespace nxhost
