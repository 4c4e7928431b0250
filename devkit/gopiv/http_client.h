// A small HTTP client, which plays the browser for the stand-in host and for tests, and the form fields that the
// service reads too. It follows no redirection by itself. The functions of the client block and throw
// std::runtime_error when the server cannot be reached or does not answer in HTTP. Any thread; all texts are UTF-8.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace devkit {

/// Fields of a form or of an address's query, by name.
using Fields = std::map<std::string, std::string>;

/// `text` with everything but letters, digits and "-._~" written as %XX.
std::string percentEncode(std::string_view text);

/// The reverse. A "%" without two hexadecimal digits behind it stays, and so does a "+".
std::string percentDecode(std::string_view text);

/// Joins fields as "name=value&name=value", encoded.
std::string encodeFields(const Fields& fields);

/// Reads such a text; a "+" is a blank, and the last of several equal names wins.
Fields parseFields(const std::string& text);

/// How each secret of the service begins (codes, states, tokens), so that it is found wherever it should not be.
inline constexpr std::string_view secretMark = "5ec2e75ec2e7";

struct HttpAnswer {
    int status = 0;
    std::string location;  ///< full address of a redirection, otherwise empty
    std::string body;
};

/// GET of an address "http://host:port/path?query".
HttpAnswer httpGet(const std::string& address);

/// POST of a form to such an address.
HttpAnswer httpPost(const std::string& address, const Fields& form);

/// Does in the browser what the user does after the plug-in has opened a sign-in address: loads the page, presses
/// "Sign in" or "Refuse", and follows the redirection back to the client. Returns the last page. Throws
/// std::runtime_error also when one of the pages has an unexpected status.
HttpAnswer answerSignIn(const std::string& address, bool accept);

}  // namespace devkit
