#include "http_client.h"

#include <algorithm>
#include <charconv>
#include <sstream>
#include <stdexcept>
#include <utility>
// Asio needs std::exchange without including its header.
#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>

namespace devkit {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;

struct Address {
    std::string origin;  ///< "http://host:port"
    std::string host;
    std::string port;
    std::string target;  ///< path and query
};

Address parseAddress(const std::string& address) {
    static const std::string scheme = "http://";
    if (!address.starts_with(scheme)) throw std::runtime_error("Not an http address: " + address);
    const std::size_t targetStart = std::min(address.find('/', scheme.size()), address.size());
    const std::string authority = address.substr(scheme.size(), targetStart - scheme.size());
    const std::size_t colon = std::min(authority.find(':'), authority.size());
    const std::string target = address.substr(targetStart);
    return {address.substr(0, targetStart), authority.substr(0, colon),
            colon < authority.size() ? authority.substr(colon + 1) : "80", target.empty() ? "/" : target};
}

HttpAnswer exchange(const Address& address, http::request<http::string_body> request) {
    request.set(http::field::host, address.host + ":" + address.port);
    request.set(http::field::connection, "close");
    request.prepare_payload();

    asio::io_context context;
    asio::ip::tcp::socket socket(context);
    asio::connect(socket, asio::ip::tcp::resolver(context).resolve(address.host, address.port));
    http::write(socket, request);
    boost::beast::flat_buffer buffer;
    http::response<http::string_body> response;
    http::read(socket, buffer, response);
    const std::string location(response[http::field::location]);
    return {static_cast<int>(response.result_int()), location.starts_with('/') ? address.origin + location : location,
            response.body()};
}

HttpAnswer expect(int status, const HttpAnswer& answer) {
    if (answer.status != status) {
        throw std::runtime_error("The sign-in page answered with status " + std::to_string(answer.status) + ": " +
                                 answer.body);
    }
    return answer;
}

}  // namespace

std::string percentEncode(std::string_view text) {
    static constexpr std::string_view unreserved = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (unreserved.find(c) != std::string_view::npos)
            encoded += c;
        else
            encoded += {'%', digits[byte >> 4U], digits[byte & 15U]};
    }
    return encoded;
}

std::string percentDecode(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view digits = text[i] == '%' ? text.substr(i + 1, 2) : "";
        unsigned char byte = 0;
        const char* const end = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16).ptr;
        if (end - digits.data() == 2) {
            decoded += static_cast<char>(byte);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

std::string encodeFields(const Fields& fields) {
    std::string text;
    for (const auto& [name, value] : fields) {
        text += text.empty() ? "" : "&";
        text += percentEncode(name) + "=" + percentEncode(value);
    }
    return text;
}

Fields parseFields(const std::string& text) {
    Fields fields;
    std::istringstream stream(text);
    for (std::string field; std::getline(stream, field, '&');) {
        std::replace(field.begin(), field.end(), '+', ' ');
        const std::size_t equals = field.find('=');
        if (equals != std::string::npos)
            fields[percentDecode(field.substr(0, equals))] = percentDecode(field.substr(equals + 1));
    }
    return fields;
}

HttpAnswer httpGet(const std::string& address) {
    const Address parsed = parseAddress(address);
    return exchange(parsed, {http::verb::get, parsed.target, 11});
}

HttpAnswer httpPost(const std::string& address, const Fields& form) {
    const Address parsed = parseAddress(address);
    http::request<http::string_body> request{http::verb::post, parsed.target, 11, encodeFields(form)};
    request.set(http::field::content_type, "application/x-www-form-urlencoded");
    return exchange(parsed, std::move(request));
}

HttpAnswer answerSignIn(const std::string& address, bool accept) {
    expect(200, httpGet(address));
    Fields query = parseFields(address.substr(address.find('?') + 1));
    const Fields form = {{"state", query["state"]}, {"decision", accept ? "accept" : "refuse"}};
    const HttpAnswer redirection = expect(302, httpPost(parseAddress(address).origin + "/authorize", form));
    return expect(200, httpGet(redirection.location));
}

}  // namespace devkit
