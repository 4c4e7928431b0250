// The embedded service's web pages, as HTML in UTF-8. Texts given are plain; the pages escape them.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "service_data.h"

namespace gopiv::pages {

/// The sign-in form for the client program `clientId`, with the page's one-time ticket.
std::string signIn(const ServiceData& data, const std::string& clientId, const std::string& ticket);

/// A page that says one thing.
std::string message(const std::string& title, const std::string& text);

/// All workspaces, each with its revisions.
std::string overview(const ServiceData& data, const nlohmann::json& revisions);

/// One revision with its files.
std::string revision(const ServiceData& data, const nlohmann::json& revision);

}  // namespace gopiv::pages
