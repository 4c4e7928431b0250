// One client of the library: its options, its calls, its log, and the embedded service that it works with.
#pragma once

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

#include "gopiv.h"
#include "service.h"

namespace gopiv {

/// Any thread, once it is initialized. Its log is a file of its own and the function that it was given; neither ever
/// gets a token, a code or the state of a sign-in.
class Client {
 public:
    Client() = default;
    /// Makes waiting calls fail, waits until every call has returned, and stops the service.
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// The function takes texts of every level. Before the first call.
    void setLog(gopiv_log_function function, void* context);

    /// Performs an operation with a JSON object as its request, and returns the answer of gopiv_call().
    nlohmann::json call(const std::string& operation, const std::string& request);

 private:
    struct CallCount {
        int begun = 0;
        int active = 0;
    };

    /// Returns how many calls of the operation there have been, this one included.
    int beginCall(const std::string& operation);
    void endCall(const std::string& operation);
    /// Writes one line to the log file, when it takes that level, and hands the text to the log function. Within
    /// call().
    void log(const std::string& level, const std::string& text);
    void logToFile(const std::string& level, const std::string& text);
    nlohmann::json initialize(const nlohmann::json& options);
    nlohmann::json perform(const std::string& operation, const nlohmann::json& request, int number);
    /// Throws Refusal when the client ends meanwhile.
    void wait(std::chrono::milliseconds time);
    /// {"activeCalls", "operations": {name: {"active"}}}
    nlohmann::json status() const;

    gopiv_log_function logFunction_ = nullptr;
    void* logContext_ = nullptr;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::map<std::string, CallCount> calls_;  ///< by operation
    int activeCalls_ = 0;
    bool closing_ = false;
    std::filesystem::path logFile_;
    std::string logLevel_;
    std::unique_ptr<Service> service_;  ///< null for an address that leads elsewhere; last, so that it stops first
};

}  // namespace gopiv
