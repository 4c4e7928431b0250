#include "http_client.h"

#include <algorithm>
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
    std::string target;
};

Address parseAddress(const std::string& address) {
    static const std::string scheme = "http://";
    if (address.rfind(scheme, 0) != 0) {
        throw std::runtime_error("Not an http address: " + address);
    }
    const std::size_t targetStart = std::min(address.find('/', scheme.size()), address.size());
    const std::string authority = address.substr(scheme.size(), targetStart - scheme.size());
    const std::size_t colon = std::min(authority.find(':'), authority.size());
    const std::string target = address.substr(targetStart, address.find('#') - targetStart);
    return {address.substr(0, targetStart), authority.substr(0, colon),
            colon < authority.size() ? authority.substr(colon + 1) : "80", target.empty() ? "/" : target};
}

std::string resolved(const Address& base, const std::string& location) {
    return location.rfind('/', 0) == 0 ? base.origin + location : location;
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
    return {static_cast<int>(response.result_int()), std::string(response[http::field::content_type]),
            resolved(address, std::string(response[http::field::location])), response.body()};
}

HttpAnswer expect(int status, const HttpAnswer& answer) {
    if (answer.status != status) {
        throw std::runtime_error("The sign-in page answered with status " + std::to_string(answer.status) + ": " +
                                 answer.body);
    }
    return answer;
}

}  // namespace

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

std::string hiddenField(const std::string& page, const std::string& name) {
    const std::string start = "<input type=\"hidden\" name=\"" + name + "\" value=\"";
    const std::size_t found = page.find(start);
    if (found == std::string::npos) {
        return "";
    }
    const std::size_t value = found + start.size();
    return page.substr(value, page.find('"', value) - value);
}

HttpAnswer answerSignIn(const std::string& address, bool accept) {
    const HttpAnswer page = expect(200, httpGet(address));
    const Fields form = {{"ticket", hiddenField(page.body, "ticket")}, {"decision", accept ? "accept" : "refuse"}};
    const HttpAnswer redirection = expect(302, httpPost(parseAddress(address).origin + "/authorize", form));
    return expect(200, httpGet(redirection.location));
}

}  // namespace devkit
