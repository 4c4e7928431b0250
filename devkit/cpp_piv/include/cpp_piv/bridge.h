// The way from the client library to the native service library.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace cpp_piv {

/// Carries operations to a service library, one JSON text each way (UTF-8). Any thread.
class CppPivBridgeInterface {
 public:
    virtual ~CppPivBridgeInterface() = default;
    /// Performs `operation` with the JSON object `request` and returns the JSON answer. Blocks until the library has
    /// answered. Throws std::runtime_error when there is no answer.
    virtual std::string call(const std::string& operation, const std::string& request) = 0;
    /// Sets where the library's log texts go: a level of ICppPivLogger by name, and the text. Before the first call.
    virtual void setLogSink(std::function<void(const std::string& level, const std::string& text)> sink) = 0;
};

/// A bridge over a native library loaded by its full name.
class DynamicCppPivBridge : public CppPivBridgeInterface {
 public:
    /// `libraryPath`: full path in the process's file-system code page. Throws std::runtime_error, naming the path,
    /// when the library cannot be loaded or lacks an entry point.
    explicit DynamicCppPivBridge(std::string libraryPath);
    ~DynamicCppPivBridge() override;

    std::string call(const std::string& operation, const std::string& request) override;
    void setLogSink(std::function<void(const std::string&, const std::string&)> sink) override;

 private:
    struct Library;
    std::unique_ptr<Library> library_;
};

}  // namespace cpp_piv
