// A small HTTP client for tests and for the program that plays the browser's part. It follows no redirection by itself.
// All functions block, may be called on any thread, and throw std::runtime_error when the server cannot be reached or
// answers no HTTP.
#pragma once

#include <string>

#include "http_text.h"

namespace devkit {

struct HttpAnswer {
    int status = 0;
    std::string contentType;
    std::string location;  ///< full address of a redirection, otherwise empty
    std::string body;
};

/// GET of an address "http://host:port/path?query".
HttpAnswer httpGet(const std::string& address);

/// POST of a form to such an address.
HttpAnswer httpPost(const std::string& address, const Fields& form);

/// Value of the hidden input `name` of a page; empty when the page has none.
std::string hiddenField(const std::string& page, const std::string& name);

/// Does in the browser what the user does after the plug-in has opened a sign-in address: loads the page, presses
/// "Sign in" or "Refuse", and follows the redirection back to the client. Returns the last page. Throws
/// std::runtime_error as well when a page of the way is not the expected one.
HttpAnswer answerSignIn(const std::string& address, bool accept);

}  // namespace devkit
