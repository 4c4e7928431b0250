#include "http_server.h"

#include <algorithm>
#include <future>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>
// Asio needs std::exchange without including its header.
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>

namespace gopiv {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;
using Response = http::response<http::string_body>;

constexpr std::size_t sizeLimit = 16 * 1024;

HttpRequest requestFrom(const http::request<http::string_body>& message) {
    const std::string target(message.target());
    const std::size_t question = std::min(target.find('?'), target.size());
    HttpRequest request;
    request.method = std::string(message.method_string());
    request.path = target.substr(0, question);
    request.query = devkit::parseFields(std::string_view(target).substr(std::min(question + 1, target.size())));
    request.form = devkit::parseFields(message.body());
    return request;
}

HttpResponse plainText(int status, const std::string& text) {
    return {status, "text/plain; charset=utf-8", text, ""};
}

/// Why a request is not even looked at. A foreign host is a name of somebody else's that leads to this computer; a
/// foreign origin is a page of somebody else's that sends its forms here.
std::optional<HttpResponse> refusal(const http::request<http::string_body>& message, const std::string& authority) {
    if (message.method() != http::verb::get && message.method() != http::verb::post) {
        return plainText(405, "Only GET and POST are served here.\n");
    }
    if (message[http::field::host] != authority) {
        return plainText(421, "This service has no other name than " + authority + ".\n");
    }
    const std::string origin(message[http::field::origin]);
    if (!origin.empty() && origin != "http://" + authority) {
        return plainText(403, "Only this service's own pages may ask this.\n");
    }
    return std::nullopt;
}

HttpResponse answer(const HttpHandler& handler, const http::request<http::string_body>& message,
                    const std::string& authority) {
    if (auto refused = refusal(message, authority)) {
        return *refused;
    }
    try {
        return handler(requestFrom(message));
    } catch (const std::exception& error) {
        return plainText(500, std::string(error.what()) + "\n");
    }
}

Response messageFrom(const HttpResponse& response, bool keepAlive) {
    Response message(static_cast<http::status>(response.status), 11);
    message.set(http::field::content_type, response.contentType);
    message.set(http::field::cache_control, "no-store");
    message.set("X-Content-Type-Options", "nosniff");
    message.set("Content-Security-Policy",
                "default-src 'none'; style-src 'unsafe-inline'; img-src data:; form-action 'self'; base-uri 'none'; "
                "frame-ancestors 'none'");
    // Without any referrer a browser would send these pages' own forms with the origin "null".
    message.set("Referrer-Policy", "same-origin");
    if (!response.location.empty()) {
        message.set(http::field::location, response.location);
    }
    message.body() = response.body;
    message.keep_alive(keepAlive);
    message.prepare_payload();
    return message;
}

/// One connection: reads a request, writes its response, and so on. Lives in the handlers that wait for it. It sets no
/// timer: on Windows that would start a thread, which the context's end joins.
class Connection : public std::enable_shared_from_this<Connection> {
 public:
    Connection(tcp::socket socket, const HttpHandler& handler, const std::string& authority)
        : socket_(std::move(socket)), handler_(handler), authority_(authority) {}

    void read() {
        parser_.emplace();
        parser_->header_limit(sizeLimit);
        parser_->body_limit(sizeLimit);
        http::async_read(socket_, buffer_, *parser_, [self = shared_from_this()](beast::error_code error, std::size_t) {
            if (!error) {
                self->write();
            }
        });
    }

 private:
    void write() {
        const auto& request = parser_->get();
        response_ = messageFrom(answer(handler_, request, authority_), request.keep_alive());
        http::async_write(socket_, response_, [self = shared_from_this()](beast::error_code error, std::size_t) {
            if (!error && self->response_.keep_alive()) {
                self->read();
            } else if (!error) {
                self->socket_.shutdown(tcp::socket::shutdown_send, error);
            }
        });
    }

    tcp::socket socket_;
    const HttpHandler& handler_;
    const std::string& authority_;
    beast::flat_buffer buffer_{2 * sizeLimit};
    std::optional<http::request_parser<http::string_body>> parser_;
    Response response_;
};

/// No other program may share the port while this one has it. (The option of the same purpose elsewhere only skips the
/// wait for connections that have ended.)
void claimAddress(tcp::acceptor& acceptor) {
#if defined(_WIN32)
    using ExclusiveUse = asio::detail::socket_option::boolean<SOL_SOCKET, SO_EXCLUSIVEADDRUSE>;
    acceptor.set_option(ExclusiveUse(true));
#else
    acceptor.set_option(tcp::acceptor::reuse_address(true));
#endif
}

}  // namespace

struct HttpServer::Loop {
    Loop(unsigned short port, HttpHandler requestHandler) : handler(std::move(requestHandler)) {
        const tcp::endpoint endpoint(asio::ip::address_v4::loopback(), port);
        acceptor->open(endpoint.protocol());
        claimAddress(*acceptor);
        acceptor->bind(endpoint);
        acceptor->listen();
        boundPort = acceptor->local_endpoint().port();
        authority = "127.0.0.1:" + std::to_string(boundPort);
    }

    void accept() {
        acceptor->async_accept([this](beast::error_code error, tcp::socket socket) {
            if (!error) {
                std::make_shared<Connection>(std::move(socket), handler, authority)->read();
            }
            if (error != asio::error::operation_aborted) {
                accept();
            }
        });
    }

    void run() {
        accept();
        context->run();
        ended.set_value();
    }

    void stop() {
        context->stop();
        ended.get_future().wait();
        acceptor.reset();
        context.reset();  // with every connection
    }

    HttpHandler handler;
    std::optional<asio::io_context> context{std::in_place, 1};
    std::optional<tcp::acceptor> acceptor{*context};
    unsigned short boundPort = 0;
    std::string authority;
    std::promise<void> ended;
};

HttpServer::HttpServer(unsigned short port, HttpHandler handler) try
    : loop_(std::make_shared<Loop>(port, std::move(handler))) {
    // Detached: a thread cannot be joined while the loader's lock is held, since its exit takes that lock.
    std::thread([loop = loop_] { loop->run(); }).detach();
} catch (const boost::system::system_error& error) {
    throw std::runtime_error("The embedded development service cannot listen on 127.0.0.1:" + std::to_string(port) +
                             ": " + error.code().message() + ".");
}

HttpServer::~HttpServer() {
    loop_->stop();
}

unsigned short HttpServer::port() const {
    return loop_->boundPort;
}

}  // namespace gopiv
