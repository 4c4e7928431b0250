// A web server for the loopback address.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "http_text.h"

namespace gopiv {

struct HttpRequest {
    std::string method;  ///< "GET" or "POST"; any other has been refused already
    std::string path;
    devkit::Fields query;
    devkit::Fields form;  ///< of a POST
};

struct HttpResponse {
    int status = 200;
    std::string contentType = "text/html; charset=utf-8";
    std::string body;
    std::string location;  ///< of a redirection
};

/// Answers requests; called on the server's one thread. What it throws becomes a page with status 500.
using HttpHandler = std::function<HttpResponse(const HttpRequest&)>;

/// Listens on 127.0.0.1 from construction to destruction. Requests of over 16 KiB are dropped; those for another host
/// than "127.0.0.1:<port>" (421) and those from another origin's pages (403) never reach the handler.
class HttpServer {
 public:
    /// `port` 0 takes a free one. Throws std::runtime_error when the port cannot be had.
    HttpServer(unsigned short port, HttpHandler handler);
    /// Closes every connection; the handler is not called again. Waits for no thread's exit, so it may be called while
    /// the loader's lock is held.
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    unsigned short port() const;

 private:
    struct Loop;
    std::shared_ptr<Loop> loop_;
};

}  // namespace gopiv
