#include "client.h"

#include <algorithm>
#include <boost/algorithm/string/case_conv.hpp>
#include <fstream>

#include "text.h"

#include <array>
#include <string_view>
#include <utility>

namespace gopiv {
namespace {

using nlohmann::json;

using Operation = json (Service::*)(const json& request, const Misbehaviour& misbehaviour);

// Constant, because a thread that finds the library loaded is not ordered with the one that ran its initialisers.
constexpr std::array<std::pair<std::string_view, Operation>, 8> operations{
    {{"authorize", &Service::authorize},
     {"complete", &Service::complete},
     {"currentUser", &Service::currentUser},
     {"logout", &Service::logout},
     {"listWorkspaces", &Service::listWorkspaces},
     {"findRevision", &Service::findRevision},
     {"rootDirectory", &Service::rootDirectory},
     {"upload", &Service::upload}}};

Operation operationNamed(std::string_view name) {
    const auto found = std::find_if(operations.begin(), operations.end(),
                                    [name](const auto& operation) { return operation.first == name; });
    if (found == operations.end()) throw Refusal("There is no operation '" + std::string(name) + "'.");
    return found->second;
}

std::string versionsText(const json& versions) {
    std::string text;
    for (const auto& [name, version] : versions.items())
        text += (text.empty() ? "" : ", ") + name + " " + version.get<std::string>();
    return text;
}

std::size_t rankOf(const std::string& level) {
    return std::string_view("debug info warning error").find(level);
}

std::string oneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, ' ');
    return text;
}

}  // namespace

Client::~Client() {
    if (service_) service_->signIns().close();
    std::unique_lock lock(mutex_);
    closing_ = true;
    changed_.notify_all();
    changed_.wait(lock, [this] { return activeCalls_ == 0; });
}

void Client::setLog(gopiv_log_function function, void* context) {
    logFunction_ = function;
    logContext_ = context;
}

void Client::log(const std::string& level, const std::string& text) {
    logToFile(level, text);
    if (logFunction_ != nullptr) logFunction_(logContext_, level.c_str(), oneLine(text).c_str());
}

void Client::logToFile(const std::string& level, const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (!logFile_.empty() && rankOf(level) >= rankOf(logLevel_)) {
        std::ofstream(logFile_, std::ios::binary | std::ios::app)
            << utcNow() << " [" << boost::to_upper_copy(level) << "] " << oneLine(text) << '\n';
    }
}

json Client::call(const std::string& operation, const std::string& request) {
    const int number = beginCall(operation);
    json answer;
    try {
        log("debug", operation + " begins.");
        const json members = json::parse(request);
        answer["result"] = operation == "initialize" ? initialize(members) : perform(operation, members, number);
        log("debug", operation + " is done.");
    } catch (const std::exception& error) {
        log("warning", operation + " failed: " + error.what());
        answer = {{"error", error.what()}};
    } catch (const SilentRefusal&) {
        log("warning", operation + " failed without a message.");
        answer = {{"error", nullptr}};
    }
    endCall(operation);
    return answer;
}

int Client::beginCall(const std::string& operation) {
    const std::lock_guard lock(mutex_);
    CallCount& count = calls_[operation];
    ++activeCalls_;
    ++count.active;
    return ++count.begun;
}

void Client::endCall(const std::string& operation) {
    const std::lock_guard lock(mutex_);
    --activeCalls_;
    --calls_[operation].active;
    changed_.notify_all();
}

json Client::initialize(const json& options) {
    if (options.contains("logFile")) {
        const std::lock_guard lock(mutex_);
        logFile_ = pathOf(options["logFile"]);
        logLevel_ = options.value("logLevel", "info");
    }
    const json& environment = options.at("environment");
    if (const auto address = parseServiceAddress(environment.at("ServerURL"))) {
        service_ = std::make_unique<Service>(
            *address, environment.at("ClientID"), [this] { return status(); },
            [this](const std::string& page) { logToFile("debug", "Page: " + page); });
    }
    log("info", "Development service library, used by " + versionsText(options.at("clientVersions")) +
                    (service_ ? ", with its embedded service." : ", without a service."));
    return nullptr;
}

json Client::perform(const std::string& operation, const json& request, int number) {
    if (!service_) {
        throw Refusal(
            "This development library reaches only its embedded development service: set \"pivra_nx_server_url = "
            "http://127.0.0.1:0/?data=<percent-encoded folder>\" in pivra.properties.");
    }
    if (operation == "complete") service_->signIns().wait();
    const Misbehaviour misbehaviour = service_->data().misbehaviour(operation, number);
    wait(std::chrono::milliseconds(misbehaviour.delayMs));
    if (misbehaviour.emptyError) throw SilentRefusal{};
    if (!misbehaviour.error.is_null()) throw Refusal(misbehaviour.error.get<std::string>());
    json result = (*service_.*operationNamed(operation))(request, misbehaviour);
    if (misbehaviour.disconnect) throw Refusal("The connection to the Pivra service was lost.");
    return result;
}

void Client::wait(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    if (changed_.wait_for(lock, time, [this] { return closing_; }))
        throw Refusal("The service client is being closed.");
}

json Client::status() const {
    const std::lock_guard lock(mutex_);
    json counts = json::object();
    for (const auto& [operation, count] : calls_) counts[operation] = {{"active", count.active}};
    return {{"activeCalls", activeCalls_}, {"operations", counts}};
}

}  // namespace gopiv
