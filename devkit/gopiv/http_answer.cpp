#include "http_answer.h"

#include <algorithm>

namespace gopiv {
namespace {

namespace http = boost::beast::http;

HttpRequest requestFrom(const RequestMessage& message) {
    const std::string target(message.target());
    const std::size_t question = std::min(target.find('?'), target.size());
    const bool isPost = message.method() == http::verb::post;
    return {std::string(message.method_string()), target.substr(0, question),
            devkit::parseFields(isPost ? message.body() : target.substr(std::min(question + 1, target.size())))};
}

HttpResponse plainText(int status, const std::string& text) {
    return {text + "\n", status, "", "text/plain; charset=utf-8"};
}

HttpResponse responseTo(const HttpHandler& handler, const RequestMessage& message, const std::string& authority) try {
    if (message[http::field::host] != authority)
        return plainText(421, "This service has no other name than " + authority + ".");
    const std::string origin(message[http::field::origin]);
    if (!origin.empty() && origin != "http://" + authority)
        return plainText(403, "Only this service's own pages may ask this.");
    return handler(requestFrom(message));
} catch (const std::exception& error) {
    return plainText(500, error.what());
}

}  // namespace

ResponseMessage answer(const HttpHandler& handler, const RequestMessage& request, const std::string& authority) {
    const HttpResponse response = responseTo(handler, request, authority);
    ResponseMessage message(static_cast<http::status>(response.status), 11, response.body);
    message.set(http::field::content_type, response.contentType);
    message.set(http::field::cache_control, "no-store");
    if (!response.location.empty()) message.set(http::field::location, response.location);
    message.keep_alive(false);
    message.prepare_payload();
    return message;
}

}  // namespace gopiv
