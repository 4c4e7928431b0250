// What a failing method throws.
#pragma once

#include <nxopen_export.h>

#include <exception>
#include <string>

namespace NXOpen {

class NXOPEN_EXPORT NXException : public std::exception {
 public:
    static NXException Create(const char* message) { return NXException(message); }

    /// UTF-8.
    const char* what() const noexcept override { return message_.c_str(); }

 private:
    explicit NXException(const char* message) : message_(message) {}

    std::string message_;
};

}  // namespace NXOpen
