#include "http_server.h"

#include <future>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>
// Asio needs std::exchange without including its header.
#include <boost/asio/awaitable.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/beast/core/flat_buffer.hpp>

#include "http_answer.h"

namespace gopiv {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
using asio::ip::tcp;

// Lets a fixed port be used again right after its last connections have ended. Windows allows that anyway; there the
// option would let another program share the port.
#if defined(_WIN32)
constexpr bool reuseAddress = false;
#else
constexpr bool reuseAddress = true;
#endif

}  // namespace

// Sets no timer: on Windows that would start a thread, which the context's end joins.
struct HttpServer::Loop {
    Loop(unsigned short port, HttpHandler requestHandler)
        : handler(std::move(requestHandler)),
          acceptor(std::in_place, *context, tcp::endpoint(asio::ip::address_v4::loopback(), port), reuseAddress) {}

    asio::awaitable<void> accept() {
        while (true) {
            tcp::socket socket = co_await acceptor->async_accept(asio::use_awaitable);
            asio::co_spawn(*context, serve(std::move(socket)), asio::detached);
        }
    }

    /// One request of a connection, which ends with it.
    asio::awaitable<void> serve(tcp::socket socket) {
        beast::flat_buffer buffer;
        RequestMessage request;
        co_await beast::http::async_read(socket, buffer, request, asio::use_awaitable);
        auto response = answer(handler, request, authority);
        co_await beast::http::async_write(socket, response, asio::use_awaitable);
        socket.shutdown(tcp::socket::shutdown_send);
    }

    void run() {
        asio::co_spawn(*context, accept(), asio::detached);
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
    std::optional<tcp::acceptor> acceptor;
    unsigned short boundPort = acceptor->local_endpoint().port();
    std::string authority = "127.0.0.1:" + std::to_string(boundPort);
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
