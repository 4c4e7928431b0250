#include <cpp_piv/client.h>

#include <devkit/call_interceptor.h>

#include <array>
#include <chrono>
#include <map>
#include <span>
#include <stdexcept>
#include <thread>
#include <type_traits>
#include <utility>

#include "records_json.h"

namespace cpp_piv {
namespace {

using nlohmann::json;

void writeLog(ICppPivLogger& logger, const std::string& level, const std::string& text) {
    using Writer = void (ICppPivLogger::*)(const std::string&);
    static const std::map<std::string, Writer> writers{{"debug", &ICppPivLogger::debug},
                                                       {"info", &ICppPivLogger::info},
                                                       {"warning", &ICppPivLogger::warning},
                                                       {"error", &ICppPivLogger::error}};
    (logger.*writers.at(level))("[cpp-piv] " + text);
}

/// The "result" of an answer. An "error" is thrown: its text, or UnknownFailure when it has none.
json resultOf(const json& answer) {
    const auto error = answer.find("error");
    if (error == answer.end()) return answer.at("result");
    if (error->is_null()) throw UnknownFailure{};
    throw std::runtime_error(error->get<std::string>());
}

template <class Result>
Result resultOfCall(CppPivBridgeInterface& bridge, const std::string& operation, const json& request) {
    json members = json::object();
    members.merge_patch(request);  // leaves out what is null
    const std::string text = members.dump(-1, ' ', false, json::error_handler_t::replace);
    try {
        return resultOf(json::parse(bridge.call(operation, text))).get<Result>();
    } catch (const json::exception& error) {
        throw std::runtime_error("The service's answer to the operation " + operation +
                                 " makes no sense: " + error.what());
    }
}

/// Passes the call interceptor, whose faults are the service's. `name` is "cpp_piv::" and the operation.
template <class Result>
Result perform(CppPivBridgeInterface& bridge, const char* name, const json& request) {
    using devkit::FaultKind;
    const auto operation = std::string(name).substr(std::string_view("cpp_piv::").size());
    const devkit::NeighbourTime time(name);
    static constexpr std::array kinds{FaultKind::error, FaultKind::unknown, FaultKind::late, FaultKind::cutOff,
                                      FaultKind::empty};
    // What returns nothing has no empty answer.
    const auto possible = std::span(kinds).first(std::is_same_v<Result, json> ? kinds.size() - 1 : kinds.size());
    const auto fault = devkit::CallInterceptor::instance().enterOther(name, possible);
    if (!fault) return resultOfCall<Result>(bridge, operation, request);
    if (fault->kind == FaultKind::error) throw std::runtime_error(fault->message);
    if (fault->kind == FaultKind::unknown) throw UnknownFailure{};
    if (fault->kind == FaultKind::empty) return Result{};
    if (fault->kind == FaultKind::late) std::this_thread::sleep_for(std::chrono::milliseconds(300));
    Result result = resultOfCall<Result>(bridge, operation, request);
    if (fault->kind == FaultKind::cutOff) throw std::runtime_error(fault->message);
    return result;
}

}  // namespace

CppPivClient::CppPivClient(std::shared_ptr<CppPivBridgeInterface> bridge, std::shared_ptr<ICppPivLogger> logger)
    : bridge_(std::move(bridge)), logger_(std::move(logger)) {
    if (logger_) {
        bridge_->setLogSink(
            [sink = logger_](const std::string& level, const std::string& text) { writeLog(*sink, level, text); });
    }
}

void CppPivClient::initialize(const CppPivInitializeOptions& options) {
    perform<json>(*bridge_, "cpp_piv::initialize", options);
}

std::string CppPivClient::localAuthFlowAuthorize() {
    return perform<std::string>(*bridge_, "cpp_piv::authorize", json::object());
}

CppPivLocalAuthTokens CppPivClient::localAuthFlowComplete() {
    return perform<CppPivLocalAuthTokens>(*bridge_, "cpp_piv::complete", json::object());
}

CppPivUser CppPivClient::getCurrentUser(const std::string& accessToken) const {
    return perform<CppPivUser>(*bridge_, "cpp_piv::currentUser", json::object({{"accessToken", accessToken}}));
}

std::string CppPivClient::localAuthFlowLogout() {
    return perform<std::string>(*bridge_, "cpp_piv::logout", json::object());
}

std::vector<CppPivWorkspace> CppPivClient::listWorkspaces(const std::string& accessToken,
                                                          const std::string& filter) const {
    return perform<std::vector<CppPivWorkspace>>(*bridge_, "cpp_piv::listWorkspaces",
                                                 {{"accessToken", accessToken}, {"filter", filter}});
}

std::vector<CppPivFindRevisionResult> CppPivClient::findRevision(
    const std::string& accessToken, std::int64_t workspaceId, const std::string& fileId,
    const std::string& sourceVersion, const std::string& revision, const std::string& fileName, bool includeDeleted,
    bool latestOnly, bool isAssembly, bool exactMatch) const {
    return perform<std::vector<CppPivFindRevisionResult>>(*bridge_, "cpp_piv::findRevision",
                                                          {{"accessToken", accessToken},
                                                           {"workspaceId", workspaceId},
                                                           {"fileId", fileId},
                                                           {"sourceVersion", sourceVersion},
                                                           {"revision", revision},
                                                           {"fileName", fileName},
                                                           {"includeDeleted", includeDeleted},
                                                           {"latestOnly", latestOnly},
                                                           {"isAssembly", isAssembly},
                                                           {"exactMatch", exactMatch}});
}

CppPivDirectory CppPivClient::getRootDirectory(const std::string& accessToken, std::int64_t workspaceId) const {
    return perform<CppPivDirectory>(*bridge_, "cpp_piv::rootDirectory",
                                    {{"accessToken", accessToken}, {"workspaceId", workspaceId}});
}

CppPivUploadResult CppPivClient::upload(const std::string& accessToken, const CppPivUploadPayload& payload,
                                        bool replace) const {
    return perform<CppPivUploadResult>(*bridge_, "cpp_piv::upload",
                                       {{"accessToken", accessToken}, {"payload", payload}, {"replace", replace}});
}

}  // namespace cpp_piv
