#include <NXOpen/NXException.hxx>

namespace NXOpen {

NXException::NXException(int errorCode, const std::string& message) : errorCode_(errorCode), message_(message) {}

NXException::NXException(const NXException& other) = default;

NXException::~NXException() noexcept = default;

NXException NXException::Create(int errorCode) {
    return NXException(errorCode, "Error " + std::to_string(errorCode));
}

NXException NXException::Create(const char* message) {
    return NXException(1, message);
}

int NXException::ErrorCode() const {
    return errorCode_;
}

const char* NXException::Message() const {
    return message_.c_str();
}

const char* NXException::what() const noexcept {
    return message_.c_str();
}

}  // namespace NXOpen
