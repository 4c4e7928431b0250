// Finds the page of an uploaded revision in the service's response.
#pragma once

#include <map>
#include <optional>
#include <string>

namespace ui {

/// The address that belongs to the uploaded revision.
///
/// The revision's id is the entry "revisionId" or "revision_id", or that member of an entry whose value is a JSON
/// object without an address. A link is an entry whose value is a web address with the id as a query parameter of one
/// of those names, or a JSON object with the id and a web address as members. Where the response names no id, any one
/// will do, but links of more than one matching id are no answer. The address is http or https, in printable ASCII. Any
/// thread.
std::optional<std::string> uploadLink(const std::map<std::string, std::string>& responseEntries);

}  // namespace ui
