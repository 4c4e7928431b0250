#include "client.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "text.h"

namespace gopiv {
namespace {

using nlohmann::json;

struct Operation {
    std::string_view name;
    json (Service::*perform)(const json& request, const json& misbehaviour);
};

constexpr std::array<Operation, 8> operations{{{"authorize", &Service::authorize},
                                               {"complete", &Service::complete},
                                               {"currentUser", &Service::currentUser},
                                               {"logout", &Service::logout},
                                               {"listWorkspaces", &Service::listWorkspaces},
                                               {"findRevision", &Service::findRevision},
                                               {"rootDirectory", &Service::rootDirectory},
                                               {"upload", &Service::upload}}};

const Operation& findOperation(const std::string& name) {
    const auto found = std::find_if(operations.begin(), operations.end(),
                                    [&](const Operation& candidate) { return candidate.name == name; });
    if (found == operations.end()) {
        throw Refusal("The service library has no operation \"" + name + "\".");
    }
    return *found;
}

std::string versionsText(const json& versions) {
    std::string text;
    for (const auto& [name, version] : versions.items()) {
        text += (text.empty() ? "" : ", ") + name + " " + version.get<std::string>();
    }
    return text;
}

}  // namespace

Client::~Client() {
    if (service_) {
        service_->signIns().close();
    }
    calls_.close();
}

json Client::call(const std::string& operation, const json& request) {
    const int number = calls_.enter(operation);
    struct Leave {
        CallBook& calls;
        const std::string& operation;
        ~Leave() { calls.leave(operation); }
    } const leave{calls_, operation};
    try {
        log_.write(LogLevel::debug, operation + " begins.");
        json result = operation == "initialize" ? initialize(request) : perform(operation, request, number);
        log_.write(LogLevel::debug, operation + " is done.");
        return result;
    } catch (const std::exception& error) {
        log_.write(LogLevel::warning, operation + " failed: " + error.what());
        throw;
    } catch (const SilentRefusal&) {
        log_.write(LogLevel::warning, operation + " failed without a message.");
        throw;
    }
}

json Client::initialize(const json& options) {
    const std::lock_guard lock(mutex_);
    if (initialized_) {
        throw Refusal("The service client is initialized already.");
    }
    if (options.contains("logFile")) {
        log_.openFile(pathFromUtf8(options["logFile"]), logLevelFrom(options.value("logLevel", "")));
    }
    const json& environment = options.at("environment");
    if (const auto address = parseServiceAddress(environment.at("ServerURL"))) {
        service_ = std::make_unique<Service>(
            *address, environment.at("ClientID"), [this] { return calls_.status(); },
            [this](const std::string& page) { log_.writeFile(LogLevel::debug, "Page: " + page); });
    }
    initialized_ = true;
    log_.write(LogLevel::info, "Development service library, used by " + versionsText(options.at("clientVersions")) +
                                   (service_ ? ", with its embedded service." : ", without a service."));
    return nullptr;
}

json Client::perform(const std::string& operation, const json& request, int number) {
    const Operation& known = findOperation(operation);
    Service& target = service();
    if (operation == "complete") {
        target.signIns().wait();
    }
    const json misbehaviour = target.data().misbehaviour(operation, number);
    obey(misbehaviour);
    json result = (target.*known.perform)(request, misbehaviour);
    if (misbehaviour.value("disconnect", false)) {
        throw Refusal("The connection to the Pivra service was lost.");
    }
    return result;
}

void Client::obey(const json& misbehaviour) {
    if (misbehaviour.contains("delayMs")) {
        calls_.pause(std::chrono::milliseconds(misbehaviour["delayMs"].get<std::int64_t>()));
    }
    if (misbehaviour.value("emptyError", false)) {
        throw SilentRefusal{};
    }
    if (misbehaviour.contains("error")) {
        throw Refusal(misbehaviour["error"].get<std::string>());
    }
}

Service& Client::service() const {
    const std::lock_guard lock(mutex_);
    if (!initialized_) {
        throw Refusal("The service client is not initialized.");
    }
    if (!service_) {
        throw Refusal(
            "This development library reaches only its embedded development service: set \"pivra_nx_server_url = "
            "http://127.0.0.1:0/?data=<percent-encoded folder>\" in pivra.properties.");
    }
    return *service_;
}

}  // namespace gopiv
