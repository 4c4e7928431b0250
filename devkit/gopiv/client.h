// One client of the library: its options, its calls, its log, and the embedded service that it works with.
#pragma once

#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

#include "calls.h"
#include "log.h"
#include "service.h"

namespace gopiv {

/// Any thread.
class Client {
 public:
    Client() = default;
    /// Breaks off waiting calls, waits until every call has returned, and stops the service.
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    Log& log() { return log_; }

    /// Performs an operation and returns its result. Throws Refusal, SilentRefusal or another std::exception.
    nlohmann::json call(const std::string& operation, const nlohmann::json& request);

 private:
    nlohmann::json initialize(const nlohmann::json& options);
    nlohmann::json perform(const std::string& operation, const nlohmann::json& request, int number);
    void obey(const nlohmann::json& misbehaviour);
    Service& service() const;

    Log log_;
    CallBook calls_;
    mutable std::mutex mutex_;
    bool initialized_ = false;          ///< guarded by the mutex
    std::unique_ptr<Service> service_;  ///< set once, under the mutex; stays null for an address that leads elsewhere
};

}  // namespace gopiv
