// A call to fail, as sessions and replay steps describe it.
#pragma once

#include "json_members.h"

#include <devkit/gate.h>

#include <cstdint>
#include <string>

namespace devkit {

/// Reads {"call", "number", "status", "message", "null"}, all optional. Throws as JsonMembers, naming `where`.
inline Fault readFault(const nlohmann::json& description, const std::string& where) {
    JsonMembers members(description, where);
    Fault fault;
    std::uint64_t number = fault.number;
    members.read("call", fault.call);
    members.read("number", number);
    members.read("status", fault.status);
    members.read("message", fault.message);
    members.read("null", fault.null);
    members.finish();
    fault.number = static_cast<std::size_t>(number);
    return fault;
}

}  // namespace devkit
