// What a failing method throws.
#pragma once

#include <nxopen_export.h>

#include <exception>
#include <string>

namespace NXOpen {

class NXOPEN_EXPORT NXException : public std::exception {
 public:
    static NXException Create(int errorCode);
    static NXException Create(const char* message);

    NXException(const NXException& other);
    NXException& operator=(const NXException& other) = default;
    ~NXException() noexcept override;

    int ErrorCode() const;
    /// UTF-8.
    const char* Message() const;
    const char* what() const noexcept override;

 private:
    NXException(int errorCode, const std::string& message);

    int errorCode_;
    std::string message_;
};

}  // namespace NXOpen
