// A web server for the loopback address.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "http_client.h"

namespace gopiv {

struct HttpRequest {
    std::string method;
    std::string path;
    devkit::Fields fields;  ///< of a POST's form, otherwise of the query
};

struct HttpResponse {
    std::string body;
    int status = 200;
    std::string location = {};  ///< of a redirection
    std::string contentType = "text/html; charset=utf-8";
};

/// Answers requests; called on the server's one thread. What it throws becomes a page with status 500.
using HttpHandler = std::function<HttpResponse(HttpRequest)>;

/// Listens on 127.0.0.1 from construction to destruction.
class HttpServer {
 public:
    /// `port` 0 takes a free one. Throws std::runtime_error when the port is taken.
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
