// Where the client library writes what it does.
#pragma once

#include <string>

namespace cpp_piv {

/// A sink for the library's own log texts (UTF-8, one line each). Called on any thread that calls the client.
class ICppPivLogger {
 public:
    virtual void debug(const std::string& text) = 0;
    virtual void info(const std::string& text) = 0;
    virtual void warning(const std::string& text) = 0;
    virtual void error(const std::string& text) = 0;
    virtual ~ICppPivLogger() = default;
};

}  // namespace cpp_piv
