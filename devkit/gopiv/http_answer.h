// One request and its answer, apart from the connection that carries them.
#pragma once

#include <boost/beast/http.hpp>
#include <string>

#include "http_server.h"

namespace gopiv {

using RequestMessage = boost::beast::http::request<boost::beast::http::string_body>;
using ResponseMessage = boost::beast::http::response<boost::beast::http::string_body>;

/// What the server of the name `authority` ("127.0.0.1:4711") sends. Refuses requests under another host name that
/// leads to this computer, and forms that another site's page sends.
ResponseMessage answer(const HttpHandler& handler, const RequestMessage& request, const std::string& authority);

}  // namespace gopiv
